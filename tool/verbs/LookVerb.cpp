// SPDX-License-Identifier: MIT
//
// The words `[PATH] [FILE]...`. One word alone may be either, so the files that exist decide.

#include "verbs/LookVerb.h"

#include <utility>

#include "call/Options.h"
#include "input/Input.h"
#include "output/phrases.h"

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
        throw Failure(ExitStatus::inputOutput, {word, 0, 0, {}},
                      "there is no such file; for a path of standard input write --in " + word);
    }
    return false;
}

/// Of several files the first is taken for the path.
void requirePath(const std::string& word) {
    if (endsAsFile(word) && isFileThere(word)) {
        throw UsageError(
            "PATH is missing before the file \"" + word +
            "\": for the roots of all files write --in '', where it is the path --in " + word);
    }
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
    report(call, document, m_path.get(root), out);
}

}  // namespace orvid_tool
