// SPDX-License-Identifier: MIT
//
// AssignmentVerb, what the verbs share whose words are paths with values.

#pragma once

#include <string>
#include <vector>

#include "call/Verb.h"
#include "input/PathWords.h"

namespace orvid_tool {

class AssignmentVerb : public DocumentVerb {
public:
    void addWords(Words& words, SCall& call) override;
    void prepare(SCall& call) override;

protected:
    /// Whether the document is a new one, which no text is read for.
    bool isNew() const { return m_isNew; }
    const std::vector<SAssignment>& assignments() const { return m_assignments; }
    /// Takes the words for `JSON FILE...`, in place of prepare(): one assignment without a path.
    void prepareValue(SCall& call);

private:
    /// Does the one at that place to the document's root.
    virtual void assign(Document& document, std::size_t index) const = 0;
    void read(const SCall& call, Document& document) const final;
    void apply(const SCall& call, Document& document, Bytes& out) const final;

    void beginNew(SCall& call);

    bool m_isNew = false;
    std::vector<std::string> m_words;
    std::vector<SAssignment> m_assignments;
};

}  // namespace orvid_tool
