// SPDX-License-Identifier: MIT
//
// orvid length: how many items, members or characters there are.

#include <algorithm>

#include "output/phrases.h"
#include "verbs/LookVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

bool beginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

class Length : public LookVerb {
public:
    const char* name() const override { return "length"; }
    const char* help() const override {
        return "Write how many items, members or characters the value at a path has";
    }
    const char* examples() const override {
        return "  orvid length settings.json\n"
               "  orvid length servers settings.json\n"
               "  orvid length --lines tags <records.jsonl";
    }

private:
    void report(const Call& /*call*/, const Document& document, const Element& value,
                Bytes& out) const override {
        std::size_t length = value.size();
        if (value.isString()) {
            const std::string& text = value.string();
            length =
                static_cast<std::size_t>(std::count_if(text.begin(), text.end(), &beginsCharacter));
        } else if (!value.isArray() && !value.isObject()) {
            throw failureAt(document, value, std::string(typePhrase(value)) + " has no length");
        }
        out.append(std::to_string(length) + "\n");
    }
};

}  // namespace

std::unique_ptr<Verb> makeLength() { return std::make_unique<Length>(); }

}  // namespace orvid_tool
