// SPDX-License-Identifier: MIT
//
// The words `[PATH] [FILE]...`. One word alone may be either, so the files that exist decide.

#include "verbs/LookVerb.h"

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "call/Options.h"
#include "input/Input.h"
#include "input/MissingPath.h"
#include "output/phrases.h"
#include "output/shellWord.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// Throws Failure for what looks like the name of a file but is none, so that standard input is
/// not waited for.
bool isFile(const std::string& word) {
    if (word == k_standardInput || word.rfind("./", 0) == 0 || word.rfind("../", 0) == 0 ||
        isFileThere(word)) {
        return true;
    }
    if (endsAsFile(word)) {
        throw Failure(
            ExitStatus::inputOutput, {word, 0, 0, {}},
            "there is no such file; for a path of standard input write --in " + shellWord(word));
    }
    return false;
}

/// Of several files the first is taken for the path.
void requirePath(const std::string& word) {
    if (namesFile(word)) {
        throw UsageError(
            "PATH is missing before the file \"" + word +
            "\": for the roots of all files write --in '', where it is the path --in " +
            shellWord(word));
    }
}

/// Whether the word would be a path, were there no file of that name.
bool isLikeKey(const std::string& word) {
    return word != k_standardInput && word.find('/') == std::string::npos && !endsAsFile(word);
}

/// Whether standard input is a pipe or a file that holds something, as for a call that reads it.
bool isInputGiven() {
    struct stat status = {};
    return fstat(STDIN_FILENO, &status) == 0 &&
           (S_ISFIFO(status.st_mode) || (S_ISREG(status.st_mode) && status.st_size > 0));
}

}  // namespace

const char* typeName(const Element& value) {
    const std::string_view phrase = typePhrase(value);
    const std::size_t article = phrase.find(' ');
    return article == std::string_view::npos ? phrase.data() : phrase.data() + article + 1;
}

void LookVerb::addWords(Words& words, Call& call) {
    words.several("WORDS", m_words,
                  "[PATH] [FILE]...; a word alone is a file where there is one of that name");
    words.option("--in", m_in, "PATH", "the path; all words are files then");
    addStrict(words, call);
    addLines(words, call);
}

void LookVerb::prepare(Call& call) {
    const bool isPathFirst =
        !m_in && !m_words.empty() && (m_words.size() > 1 || !isFile(m_words.front()));
    if (isPathFirst) {
        requireNoFile("PATH", m_words.front(), {m_words.begin() + 1, m_words.end()});
        requirePath(m_words.front());
        m_isPathFileToo = isFileThere(m_words.front());
    } else if (!m_in && m_words.size() == 1 && isLikeKey(m_words.front()) && isInputGiven()) {
        call.notes.push_back("\"" + m_words.front() +
                             "\" is read, the file of that name; for the path of standard input "
                             "write --in " +
                             shellWord(m_words.front()));
    }
    m_path = CallPath(isPathFirst ? m_words.front() : m_in.value_or(""));
    call.files.assign(m_words.begin() + (isPathFirst ? 1 : 0), m_words.end());
}

Failure LookVerb::failureAt(const Document& document, const Element& element,
                            const std::string& text) {
    Location location = document.location;
    location.setElement(element);
    return {ExitStatus::failed, std::move(location), text};
}

void LookVerb::apply(const Call& call, Document& document, Bytes& out) const {
    const Element& root = document.root;
    try {
        report(call, document, m_path.get(root), out);
    } catch (const ko::Orvid::PathNotFound& error) {
        if (!m_isPathFileToo) {
            throw;
        }
        const Failure failure = missingPath(document.location, root, error);
        throw Failure(failure.status(), failure.location(),
                      std::string(failure.text()) +
                          "; it is a file too: for the roots of all "
                          "files write --in ''");
    }
}

}  // namespace orvid_tool
