// SPDX-License-Identifier: MIT
//
// LookVerb, what the verbs that report something about the value at a path share. Without a path it
// is the root.

#pragma once

#include <string>
#include <vector>

#include "call/Verb.h"
#include "input/CallPath.h"
#include "output/Failure.h"

namespace orvid_tool {

class LookVerb : public DocumentVerb {
public:
    void addWords(Words& words, Call& call) override;
    /// Distinguishes path and files.
    void prepare(Call& call) final;

protected:
    /// A failure that names the element.
    static Failure failureAt(const Document& document, const ko::Orvid::Element& element,
                             const std::string& text);

private:
    /// Appends what is to be reported, with its newlines.
    virtual void report(const Call& call, const Document& document, const ko::Orvid::Element& value,
                        Bytes& out) const = 0;
    void apply(const Call& call, Document& document, Bytes& out) const final;

    std::vector<std::string> m_words;
    std::optional<std::string> m_in;
    CallPath m_path;
    bool m_isPathFileToo = false;  ///< a file has the name that is taken for the path
};

/// The name of the value's type in JSON: "null", "boolean", "number", "string", "array", "object".
const char* typeName(const ko::Orvid::Element& value);

}  // namespace orvid_tool
