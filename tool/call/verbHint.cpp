// SPDX-License-Identifier: MIT
//
// The names that the verbs have in other programs.

#include "call/verbHint.h"

#include <map>
#include <string_view>

#include "input/Input.h"
#include "output/shellWord.h"
#include "output/Similar.h"

namespace orvid_tool {

std::string verbHint(const std::string& word, const std::vector<std::string>& verbs) {
    static const std::map<std::string, std::string> elsewhere{
        {"add", "insert"},       {"append", "insert"}, {"cat", "print"},      {"count", "length"},
        {"cp", "copy"},          {"del", "remove"},    {"delete", "remove"},  {"fmt", "print"},
        {"format", "print"},     {"len", "length"},    {"lint", "check"},     {"mv", "move"},
        {"pretty", "print"},     {"put", "set"},       {"rm", "remove"},      {"show", "print"},
        {"slurp", "join"},       {"update", "set"},    {"validate", "check"}, {"view", "print"},
        {"version", "--version"}};
    if (isFileThere(word)) {
        return ": to look into that file, write orvid print " + shellWord(word);
    }
    if (!word.empty() && std::string_view(".[/$").find(word.front()) != std::string_view::npos) {
        return word.front() == '$' ? " (did you mean \"query\"?)" : " (did you mean \"get\"?)";
    }
    const auto known = elsewhere.find(word);
    return known != elsewhere.end() ? " (did you mean \"" + known->second + "\"?)"
                                    : suggestion(word, verbs);
}

}  // namespace orvid_tool
