// SPDX-License-Identifier: MIT
//
// orvid select: the records of which a query is true, byte for byte.

#include <optional>

#include "call/Options.h"
#include "input/QueryWord.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;

bool isTrue(const Element* result) {
    return result != nullptr && !result->isNull() && !(result->isBoolean() && !result->boolean());
}

class Select : public DocumentVerb {
public:
    const char* name() const override { return "select"; }
    const char* help() const override {
        return "Write the documents or records of which a query (JSONPath) is true";
    }
    const char* examples() const override {
        return "  orvid select --lines -j 4 '$[?@.name == \"ada\"]' <records.jsonl\n"
               "  orvid select --lines --not '$.user.email' records.jsonl\n"
               "  orvid select '$.servers[?@.port > 1024]' *.json";
    }

    void addWords(Words& words, SCall& call) override {
        words.required("QUERY", m_text, "true where its first result is neither null nor false");
        addFiles(words, call);
        words.flag("--not", m_isInverted, "write the others");
        addStrict(words, call);
        addLines(words, call);
    }

    void prepare(SCall& /*call*/) override { m_query.emplace(queryOf(m_text)); }

private:
    void read(const SCall& call, Document& document) const override {
        if (call.lines.isOn || call.isStrict) {
            DocumentVerb::read(call, document);
        } else {
            readFor(*m_query, document);
        }
    }

    void apply(const SCall& call, Document& document, Bytes& out) const override {
        if (isTrue(m_query->first(document.root)) != m_isInverted) {
            out.append(document.text);
            out.append(call.lines.isOn ? "\n" : "");
        }
    }

    std::string m_text;
    std::optional<JsonPath> m_query;
    bool m_isInverted = false;
};

}  // namespace

std::unique_ptr<Verb> makeSelect() { return std::make_unique<Select>(); }

}  // namespace orvid_tool
