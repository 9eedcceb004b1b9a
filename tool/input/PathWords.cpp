// SPDX-License-Identifier: MIT
//
// Telling paths, values and files apart.

#include "input/PathWords.h"

#include "input/Document.h"

namespace orvid_tool {

namespace {

using TWord = std::vector<std::string>::const_iterator;

/// The place of the `=` that ends the path, or npos.
std::size_t assignmentMark(const std::string& word) {
    std::size_t place = 0;
    while (place < word.length() && word[place] != '=') {
        place += word[place] == '\\' ? 2U : 1U;
    }
    return place < word.length() ? place : std::string::npos;
}

bool isFileName(const std::string& word) {
    for (const char* const start : {"/", "./", "../"}) {
        if (word.rfind(start, 0) == 0) {
            return true;
        }
    }
    return assignmentMark(word) == std::string::npos;
}

SAssignment assignment(const std::string& path, const std::string& json) {
    SAssignment result{path, {}};
    readArgument("JSON", json, result.value);
    return result;
}

}  // namespace

SAssignments assignmentsOf(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw Misuse("PATH is required");
    }
    SAssignments result;
    TWord word = words.begin();
    if (assignmentMark(*word) == std::string::npos) {
        if (words.size() == 1) {
            throw Misuse("JSON is required");
        }
        result.all.push_back(assignment(words[0], words[1]));
        word += 2;
    } else {
        for (; word != words.end() && !isFileName(*word); ++word) {
            const std::size_t mark = assignmentMark(*word);
            result.all.push_back(assignment(word->substr(0, mark), word->substr(mark + 1)));
        }
    }
    if (result.all.empty()) {
        throw Misuse("PATH is required");
    }
    result.files.assign(word, words.end());
    return result;
}

}  // namespace orvid_tool
