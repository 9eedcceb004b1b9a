// SPDX-License-Identifier: MIT
//
// AssignmentVerb, what the verbs whose words are paths with values share.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "call/Verb.h"
#include "input/PathWords.h"

namespace orvid_tool {

class AssignmentVerb : public DocumentVerb {
public:
    void addWords(Words& words, Call& call) override;
    void prepare(Call& call) override;

protected:
    /// Whether the document is a new one, for which no text is read.
    bool isNew() const { return m_isNew; }
    const std::vector<Assignment>& assignments() const { return m_assignments; }
    /// Whether newPathHint() may have one for a path, except one that may lack its slash.
    bool mayHaveUnusualKey() const;
    /// Whether a path may be a pointer without its first slash, as far as the document's text says.
    bool mayLackSlash(std::string_view text) const;
    /// Says the hint, where there is one, when the run has ended. Not for records.
    void noteNew(const std::string& path, const std::string& hint) const;
    ExitStatus outcome(const Report& report) const override;
    /// Takes the words for `JSON FILE...`, in place of prepare(): one assignment without a path.
    void prepareValue(Call& call);

private:
    /// What is reported where a place of the path is not there.
    virtual Failure missingAt(const Document& document, const ko::Orvid::PathNotFound& error,
                              const CallPath& path) const;
    /// Carries out the assignment at that index on the document's root.
    virtual void assign(Document& document, std::size_t index) const = 0;
    void read(const Call& call, Document& document) const final;
    std::string hintForFile(const std::string& word) const final;
    void apply(const Call& call, Document& document, Bytes& out) const final;

    void beginNew(Call& call);

    bool m_isNew = false;
    bool m_isApart = false;     ///< the path and its value are two words
    bool m_mayBePaths = false;  ///< what was taken for files, after a path and a value
    std::vector<std::string> m_words;
    std::vector<Assignment> m_assignments;
    mutable std::vector<std::string> m_notes;  ///< on whole documents, which one thread edits
};

}  // namespace orvid_tool
