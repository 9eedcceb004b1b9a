// SPDX-License-Identifier: MIT
//
// Trees that are read, written and checked for most tests.

#include "support/Document.h"

namespace orvid_test {

Document::Document(const std::string& text) { ko::Orvid::DomParser().parse(root, text + "\n"); }

std::string compact(const ko::Orvid::Element& element) {
    const std::string text =
        ko::Orvid::Generator(nullptr, ko::Orvid::WriteOptions::compact()).encode(element);
    std::string result;
    bool isInString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (isInString && text[i] == '\\') {
            result += text[++i];
        } else if (text[i] == '"') {
            isInString = !isInString;
        } else if (text[i] == ':' && !isInString) {
            result += ' ';
        }
    }
    return result;
}

testing::AssertionResult linksHold(const ko::Orvid::Element& root, Indexes indexes) {
    const std::string broken = brokenLink(root, indexes);
    return broken.empty() ? testing::AssertionSuccess() : testing::AssertionFailure() << broken;
}

}  // namespace orvid_test
