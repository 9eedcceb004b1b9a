// SPDX-License-Identifier: MIT
//
// Which words are paths, which values, and which files.

#include "input/PathWords.h"

#include <algorithm>
#include <cstring>

#include "input/Input.h"
#include "input/ValueWord.h"
#include "output/shellWord.h"

namespace orvid_tool {

namespace {

using Word = std::vector<std::string>::const_iterator;

bool startsWith(const std::string& word, const char* start) { return word.rfind(start, 0) == 0; }

/// Whether the byte is a backslash that takes away the meaning of the next. In a pointer only those
/// before a `=` do, all others are characters of a key.
bool isEscape(const std::string& word, std::size_t at) {
    if (word[at] != '\\' || !startsWith(word, "/")) {
        return word[at] == '\\';
    }
    const std::size_t end = word.find_first_not_of('\\', at);
    return end != std::string::npos && word[end] == '=';
}

/// The offset of the `=` that ends the path, or npos.
std::size_t assignmentMark(const std::string& word) {
    std::size_t at = 0;
    while (at < word.length() && word[at] != '=') {
        at += isEscape(word, at) ? 2U : 1U;
    }
    return at < word.length() ? at : std::string::npos;
}

/// After pointers, a word with a slash before its `=` is another of them.
bool isFileName(const std::string& word, bool arePointers) {
    if ((startsWith(word, "/") && !arePointers) || startsWith(word, "./") ||
        startsWith(word, "../")) {
        return true;
    }
    return assignmentMark(word) == std::string::npos;
}

/// The path with which the word begins, up to the mark or the word's end. A pointer is without its
/// escapes; those of path text are read where paths are.
std::string pathBefore(const std::string& word, std::size_t mark) {
    if (!startsWith(word, "/")) {
        return word.substr(0, mark);
    }
    std::string pointer;
    for (std::size_t i = 0; i < std::min(mark, word.length()); ++i) {
        i += isEscape(word, i) ? 1U : 0U;
        pointer += word[i];
    }
    return pointer;
}

/// The root is too much to be replaced by a slip.
void requireRoot(const std::string& word, std::size_t mark) {
    if (mark == 0) {
        throw UsageError("\"" + word +
                         "\" has no path before its =; for the whole document write '' VALUE, in "
                         "two words");
    }
}

Assignment assignment(const std::string& path, const std::string& value, bool isStrict,
                      const std::string& before) {
    Assignment result{CallPath(path), {}};
    readValueWord(value, result.value, isStrict, before);
    return result;
}

/// The path with each backslash doubled that escapes nothing which has a meaning in a path.
std::string withDoubled(const std::string& path) {
    std::string written;
    for (std::size_t i = 0; i < path.length(); ++i) {
        written += path[i];
        if (path[i] == '\\') {
            const bool isEscape =
                i + 1 < path.length() && std::strchr(".[]\\", path[i + 1]) != nullptr;
            written += isEscape ? path[++i] : '\\';
        }
    }
    return written;
}

/// What to write where a word has no mark as there is a backslash before its `=`, which is mostly
/// the last character of the key. Empty for other words.
std::string escapedMarkHint(const std::string& word) {
    const std::size_t at = word.find("\\=");
    if (at == std::string::npos || assignmentMark(word) != std::string::npos) {
        return "";
    }
    const std::string path = word.substr(0, at);
    return "; \\= is a = in the key, and for a key that ends in a backslash write " +
           shellWord((startsWith(path, "/") ? path : withDoubled(path)) + "\\" + word.substr(at));
}

UsageError spacedAssignment() {
    return UsageError("PATH=VALUE is one word, without spaces around the =");
}

/// Of a path and a value. Where the value is none and no file follows, but is the name of one, it
/// is the value that was forgotten.
Assignment onlyAssignment(const std::vector<std::string>& words, bool isStrict) {
    if (startsWith(words[1], "=")) {
        throw spacedAssignment();
    }
    try {
        return assignment(pathBefore(words[0], std::string::npos), words[1], isStrict, "");
    } catch (const Failure& failure) {
        if (endsAsFile(words[0]) && isFileThere(words[0])) {
            throw UsageError("the file \"" + words[0] + "\" stands after what is set");
        }
        const std::string hint = escapedMarkHint(words[0]);
        if (words.size() > 2 || !isFileThere(words[1])) {
            throw Failure(failure.status(), failure.location(), failure.text() + hint,
                          failure.excerpt());
        }
        throw UsageError(hint.empty()
                             ? missingValue(words[1])
                             : "VALUE is missing before the file \"" + words[1] + "\"" + hint);
    }
}

/// Of a path and a value in one word. A value that seems to stand in the word after it, with a
/// value here that is none, means a `=` in the key.
Assignment assignmentIn(const Word& word, std::size_t mark, bool isValueNext, bool isStrict) {
    try {
        return assignment(pathBefore(*word, mark), word->substr(mark + 1), isStrict,
                          word->substr(0, mark + 1));
    } catch (const Failure& failure) {
        const std::string text = failure.text();
        if (isValueNext && mark + 1 == word->length()) {
            throw spacedAssignment();
        }
        if (!isValueNext || text.find(k_escapeHint) != std::string::npos) {
            throw;
        }
        throw Failure(failure.status(), failure.location(), text + k_escapeHint, failure.excerpt());
    }
}

}  // namespace

Assignments assignmentsOf(const std::vector<std::string>& words, bool isStrict) {
    if (words.empty()) {
        throw UsageError("PATH is required");
    }
    Assignments result;
    Word word = words.begin();
    if (assignmentMark(*word) == std::string::npos) {
        if (words.size() == 1) {
            throw UsageError("VALUE is required" + escapedMarkHint(*word));
        }
        result.isInputTaken = readsInput(words[1]);
        result.all.push_back(onlyAssignment(words, isStrict));
        result.areApart = true;
        word += 2;
    } else {
        const bool arePointers = startsWith(*word, "/");
        do {
            const std::size_t mark = assignmentMark(*word);
            requireRoot(*word, mark);
            const bool isInput = readsInput(word->substr(mark + 1));
            if (isInput && result.isInputTaken) {
                throw UsageError("only one VALUE can be standard input");
            }
            result.isInputTaken = result.isInputTaken || isInput;
            const Word next = word + 1;
            const bool isValueNext =
                next != words.end() && isFileName(*next, arePointers) && looksLikeValue(*next);
            result.all.push_back(assignmentIn(word, mark, isValueNext, isStrict));
            word = next;
        } while (word != words.end() && !isFileName(*word, arePointers));
    }
    result.files.assign(word, words.end());
    return result;
}

}  // namespace orvid_tool
