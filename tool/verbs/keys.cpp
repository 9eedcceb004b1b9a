// SPDX-License-Identifier: MIT
//
// orvid keys: the keys of an object.

#include "output/phrases.h"
#include "verbs/Leaves.h"
#include "verbs/LookVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

class Keys : public LookVerb {
public:
    const char* name() const override { return "keys"; }
    const char* help() const override { return "Write the keys of the object at a path"; }
    const char* examples() const override {
        return "  orvid keys settings.json\n"
               "  orvid keys 'servers[0]' settings.json\n"
               "  orvid keys --lines <records.jsonl";
    }

private:
    void report(const Call& call, const Document& document, const Element& value,
                Bytes& out) const override {
        if (!value.isObject()) {
            throw failureAt(document, value, std::string(typePhrase(value)) + " has no keys");
        }
        Element keys;
        Element::create(keys.data(), ko::Orvid::etArray, &keys);
        for (const auto& member : value.object()) {
            if (call.lines.isOn) {
                keys.array().push_back(member.first);
            } else {
                out.append(pathOnOneLine(member.first) + "\n");
            }
        }
        if (call.lines.isOn) {
            out.append(jsonLine(keys, call.layout));
        }
    }
};

}  // namespace

std::unique_ptr<Verb> makeKeys() { return std::make_unique<Keys>(); }

}  // namespace orvid_tool
