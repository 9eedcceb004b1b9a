// SPDX-License-Identifier: MIT
//
// Verb, a sub-command, and DocumentVerb, one that works on one document after the other: files, or
// the lines of files. The verbs themselves are in verbs/.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "call/Call.h"
#include "call/Words.h"
#include "input/Document.h"
#include "output/Bytes.h"

namespace orvid_tool {

class Output;
class Report;

class Verb {
public:
    virtual ~Verb();
    virtual const char* name() const = 0;
    virtual const char* help() const = 0;
    /// Calls as a user would type them, one a line.
    virtual const char* examples() const = 0;
    /// Adds the words and options of the verb.
    virtual void addWords(Words& words, Call& call) = 0;
    /// Looks at the words before any document is read. Throws UsageError or Failure.
    virtual void prepare(Call& call);
    /// Carries the verb out. Failures that do not end the run are reported; the highest status is
    /// returned.
    virtual ExitStatus run(const Call& call, const Report& report, Output& out) const = 0;
};

class DocumentVerb : public Verb {
public:
    ExitStatus run(const Call& call, const Report& report, Output& out) const final;

    /// Carries the verb out on a whole file in pieces, and returns true. Or returns false, with
    /// nothing read that cannot be read again and nothing written: then the file is to be treated
    /// as any document. Throws Failure.
    virtual bool streams(const Call& call, const std::string& file, Output& out) const;

    // These are called by several threads at once, each with a document of its own.

    /// Reads the document's text, carries the verb out on it, and appends what is to be written to
    /// `out`. Throws Failure; `out` may have grown then.
    void work(const Call& call, Document& document, Bytes& out) const;

protected:
    /// Reads the document's text into its root: here as readTree() does. Throws Failure.
    virtual void read(const Call& call, Document& document) const;

private:
    void requireAllThere(const std::vector<std::string>& files) const;
    Failure hinted(const Failure& failure, const std::string& file) const;

    /// Carries the verb out on the text alone where that is possible, and returns true. Or returns
    /// false, whatever it has appended: then read() and apply() are called.
    virtual bool applyToText(const Call& call, const Document& document, Bytes& out) const;

    /// Carries the verb out on the root and appends what is to be written to `out`. Throws Failure
    /// or what the library throws.
    virtual void apply(const Call& call, Document& document, Bytes& out) const = 0;

    /// Writes what stands before the results of all lines.
    virtual void beginLines(const Call& call, Output& out) const;

    /// What may be meant by a word that was taken for a file and is none, as the end of a message.
    virtual std::string hintForFile(const std::string& word) const;

    /// The least status of the run, asked for when all documents are done. Notes on the whole run
    /// are written here.
    virtual ExitStatus outcome(const Report& report) const;
};

/// The verbs in the order of the help.
std::vector<std::unique_ptr<Verb>> allVerbs();

}  // namespace orvid_tool
