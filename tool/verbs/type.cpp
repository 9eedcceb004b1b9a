// SPDX-License-Identifier: MIT
//
// orvid type: what kind of value there is.

#include "verbs/LookVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

class Type : public LookVerb {
public:
    const char* name() const override { return "type"; }
    const char* help() const override { return "Write the type of the value at a path"; }
    const char* examples() const override {
        return "  orvid type settings.json\n"
               "  orvid type 'servers[0].port' settings.json\n"
               "  orvid type --lines id <records.jsonl";
    }

private:
    void report(const Call& /*call*/, const Document& /*document*/, const ko::Orvid::Element& value,
                Bytes& out) const override {
        out.append(typeName(value));
        out.append("\n");
    }
};

}  // namespace

std::unique_ptr<Verb> makeType() { return std::make_unique<Type>(); }

}  // namespace orvid_tool
