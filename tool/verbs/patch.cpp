// SPDX-License-Identifier: MIT
//
// orvid patch and orvid merge: changes that are written in a file.

#include <filesystem>
#include <string>
#include <system_error>

#include "call/Options.h"
#include "edit/Kept.h"
#include "input/Input.h"
#include "input/located.h"
#include "output/phrases.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::MovedPlaces;
using ko::Orvid::PatchException;
using ko::Orvid::ReadOptions;

class Change : public DocumentVerb {
public:
    void addWords(Words& words, Call& call) override {
        words.required("PATCH", m_file, "the change; - is standard input");
        addFiles(words, call);
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        if (isStandardInput(m_file) && isInputAmong(call.files)) {
            throw UsageError("PATCH and FILE cannot both be standard input");
        }
        call.changeFile = m_file;
        readFile(m_file, m_change, call.isStrict ? ReadOptions::strict() : ReadOptions::jsonc());
    }

protected:
    const Element& given() const { return m_change; }
    /// The file that holds the change, for errors.
    Location location() const { return {inputName(m_file), 0, 0, {}}; }

    /// The failure of a value of the change with its place, where the file can be read again.
    Failure locatedAgain(const Failure& failure) const {
        std::error_code none;
        if (isStandardInput(m_file) || !std::filesystem::is_regular_file(m_file, none)) {
            return failure;
        }
        try {
            Input input(m_file);
            const Bytes text = input.readAll();
            Document document;
            document.location = location();
            document.text = text.view().substr(0, text.length() - 1);
            return located(failure, document);
        } catch (const Failure&) {
            return failure;
        }
    }

private:
    /// Returns what was moved within the document.
    virtual MovedPlaces make(Document& document, const Element& change) const = 0;

    void read(const Call& call, Document& document) const override { readForEdit(call, document); }

    void apply(const Call& call, Document& document, Bytes& out) const final {
        const MovedPlaces moved = make(document, m_change);
        appendEdited(call, document, out, moved);
    }

    std::string m_file;
    Element m_change;
};

class Patch : public Change {
public:
    const char* name() const override { return "patch"; }
    const char* help() const override { return "Apply a JSON Patch and write the document"; }
    const char* examples() const override {
        return "  orvid patch change.json settings.json\n"
               "  orvid diff old.json new.json | orvid patch - -i settings.json";
    }

    void addWords(Words& words, Call& call) override {
        Change::addWords(words, call);
        words.number("--max-growth", m_options.maxGrowth, "BYTES",
                     "the most that operations copy, in proportion to the document by default; 0 "
                     "is no limit");
    }

    void prepare(Call& call) override {
        Change::prepare(call);
        if (!given().isArray()) {
            throw Failure(ExitStatus::usage, location(),
                          "the patch must be an array of operations; this is " +
                              std::string(typePhrase(given())));
        }
    }

private:
    /// A patch may copy, and `test` looks at values.
    void read(const Call& call, Document& document) const override {
        readForCopying(call, document);
    }

    MovedPlaces make(Document& document, const Element& change) const override {
        MovedPlaces moved;
        ko::Orvid::PatchOptions options = m_options;
        options.moved = document.kept ? &moved : nullptr;
        try {
            ko::Orvid::applyPatch(document.root, change, options);
        } catch (const PatchException& error) {
            throw failure(document, error);
        }
        return moved;
    }

    /// An operation that is malformed concerns no element of the document. The errors of lines stay
    /// with their lines.
    Failure failure(const Document& document, const PatchException& error) const {
        const std::string text = "operation " + std::to_string(error.number()) +
                                 " of the patch, \"" + error.operation() + "\" of \"" +
                                 error.path() + "\": " + error.reason();
        if (error.elementPath() == nullptr && document.location.line == 0) {
            Location operation = location();
            operation.path = "[" + std::to_string(error.number()) + "]";
            return locatedAgain(Failure(ExitStatus::failed, operation, text));
        }
        Location element = document.location;
        element.setElement(error);
        return {ExitStatus::failed, element, text};
    }

    ko::Orvid::PatchOptions m_options;
};

class Merge : public Change {
public:
    const char* name() const override { return "merge"; }
    const char* help() const override { return "Merge a merge patch and write the document"; }
    void prepare(Call& call) override {
        Change::prepare(call);
        noteNames(call, given());
    }

    const char* examples() const override {
        return "  orvid merge change.json settings.json\n"
               "  echo '{\"debug\": null, \"limits\": {\"cpu\": 4}}' | orvid merge - -i "
               "settings.json";
    }

private:
    MovedPlaces make(Document& document, const Element& change) const override {
        ko::Orvid::mergePatch(document.root, change);
        return {};
    }
};

}  // namespace

std::unique_ptr<Verb> makePatch() { return std::make_unique<Patch>(); }

std::unique_ptr<Verb> makeMerge() { return std::make_unique<Merge>(); }

}  // namespace orvid_tool
