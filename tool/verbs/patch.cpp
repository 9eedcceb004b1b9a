// SPDX-License-Identifier: MIT
//
// orvid patch and orvid merge: changes that are written in a file.

#include <unistd.h>

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "call/Options.h"
#include "edit/beforeTaking.h"
#include "edit/Kept.h"
#include "input/Input.h"
#include "input/located.h"
#include "input/MissingPath.h"
#include "output/phrases.h"
#include "output/Similar.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::MovedPlaces;
using ko::Orvid::PatchException;
using ko::Orvid::ReadOptions;

class Change : public DocumentVerb {
public:
    void addWords(Words& words, Call& call) override {
        words.required("PATCH", m_word,
                       "the change: a file, - for standard input, or JSON text that begins with "
                       "{ or [");
        addFiles(words, call);
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        const ReadOptions options = call.isStrict ? ReadOptions::strict() : ReadOptions::jsonc();
        if (isJsonText(m_word)) {
            m_name = "PATCH";
            m_text.append(m_word + "\n");
            readArgument(m_name.c_str(), m_word, m_change, options);
            return;
        }
        const std::string file = m_word.substr(m_word.rfind(k_file, 0) == 0 ? k_file.length() : 0);
        if (isStandardInput(file) && isInputAmong(call.files)) {
            throw UsageError("PATCH and FILE cannot both be standard input");
        }
        call.changeFile = file;
        m_name = inputName(file);
        readChange(file, options);
    }

protected:
    const Element& given() const { return m_change; }
    /// Where the change stands, for errors.
    Location location() const { return {m_name, 0, 0, {}}; }

    /// A failure that concerns the value of that path in the change, with its position.
    Failure failureIn(const std::string& path, ExitStatus status, const std::string& text) const {
        Document document;
        document.location = location();
        document.text = this->text();
        return located({status, {m_name, 0, 0, path}, text}, document);
    }

private:
    std::string hintForFile(const std::string& word) const override {
        return isJsonText(word) ? "; the change stands before the file" : "";
    }

    static constexpr std::string_view k_file = "file:";

    std::string_view text() const { return m_text.view().substr(0, m_text.length() - 1); }

    void readChange(const std::string& file, const ReadOptions& options) {
        try {
            Input input(file);
            m_text = input.readAll();
            readTree(location(), text(), m_change, options);
        } catch (const Failure& failure) {
            const bool isMissing = !file.empty() && access(file.c_str(), F_OK) != 0 &&
                                   !isStandardInput(file) && !endsAsFile(file);
            if (!isMissing) {
                throw;
            }
            throw Failure(failure.status(), failure.location(),
                          failure.text() + std::string("; the change is a file, - for standard "
                                                       "input, or JSON text that begins with { or "
                                                       "["));
        } catch (const std::bad_alloc&) {
            throw memoryFailure(location());
        }
    }

    /// Returns all that was moved within the document.
    virtual MovedPlaces make(Document& document, const Element& change) const = 0;

    void read(const Call& call, Document& document) const override { readForEdit(call, document); }

    void apply(const Call& call, Document& document, Bytes& out) const final {
        const MovedPlaces moved = make(document, m_change);
        appendEdited(call, document, out, moved);
    }

    std::string m_word;
    std::string m_name;  ///< of the file
    Bytes m_text;        ///< of the change, with a newline after it
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
            throw failureIn("", ExitStatus::usage,
                            "the patch must be an array of operations; this is " +
                                std::string(typePhrase(given())) + orderHint(call));
        }
    }

private:
    /// For words in the wrong order, the patch among the files.
    static std::string orderHint(const Call& call) {
        const auto isPatch = [](const std::string& file) {
            return isJsonText(file) && access(file.c_str(), F_OK) != 0;
        };
        return std::any_of(call.files.begin(), call.files.end(), isPatch)
                   ? "; the change stands before the file"
                   : "";
    }

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

    static std::string operationText(const PatchException& error) {
        const std::string number = "operation " + std::to_string(error.number()) + " of the patch";
        const bool hasPath = error.elementPath() != nullptr || !error.path().empty();
        return number + (error.operation().empty() ? "" : ", \"" + error.operation() + "\"") +
               (hasPath ? " of \"" + error.path() + "\"" : "");
    }

    /// The operation that is meant, where there is none of that name, or the pointer, where there
    /// is a path in its place.
    static std::string meant(const PatchException& error) {
        const std::vector<std::string> names{"add", "remove", "replace", "move", "copy", "test"};
        const std::string& name = error.operation();
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
            return suggestion(name, names);
        }
        const std::string& path = error.path();
        if (path.empty() || path.front() == '/') {
            return "";
        }
        try {
            const bool lacksSlash = path.find('/') != std::string::npos;
            return " (did you mean \"" +
                   (lacksSlash ? "/" + path : JsonPointer::fromPath(path).str()) + "\"?)";
        } catch (const ko::Orvid::ParseException&) {
            return "";
        }
    }

    Failure failure(const Document& document, const PatchException& error) const {
        const std::string start = operationText(error) + ": ";
        if (error.elementPath() == nullptr) {
            return malformed(document, error, start + error.reason() + meant(error));
        }
        const Element before = beforeOperation(document.root, error.number());
        const std::string reason =
            start + this->reason(before, error) + (isOfTaking(before, error) ? k_ofTaking : "");
        Location at = document.location;
        at.setElement(error);
        if (error.formerPlace() == nullptr) {
            at.isMade = true;
            return {ExitStatus::failed, at,
                    reason + "; an operation before it put " + placePhrase(*at.path) + " there"};
        }
        const Element* const former = JsonPointer(*error.formerPlace()).find(document.root);
        if (former == nullptr) {
            return {ExitStatus::failed, document.location, reason};
        }
        at.setElement(*former);
        return {ExitStatus::failed, at,
                reason + (isOtherThan(*former, before, error)
                              ? "; operations before it changed " + placePhrase(*at.path)
                              : std::string())};
    }

    /// Whether the error is none in what stands in the text: the operations before have changed its
    /// element there.
    bool isOtherThan(const Element& former, const Element& before,
                     const PatchException& error) const {
        const auto [element, missing] = stopOf(before, error);
        const bool isOfChange = missing ? !former.isObject() || former.object().contains(*missing)
                                        : error.operation() == "test";
        return isOfChange && former != *element;
    }

    /// What the library says, or which step is missing, and what is there: in the document as the
    /// operations before have left it.
    std::string reason(const Element& before, const PatchException& error) const {
        const auto [element, missing] = stopOf(before, error);
        if (!missing) {
            return error.operation() == "test" ? error.reason() + thereIs(*element)
                                               : error.reason();
        }
        const bool isLast = JsonPointer::of(*element).steps().size() + 1 ==
                            JsonPointer(error.path()).steps().size();
        const bool isPut = element->isArray() && isLast && putsAt(error);
        return isPut ? error.reason() : missingStep(*element, *missing);
    }

    /// An element, and the step that it does not have, if one is missing.
    using Stop = std::pair<const Element*, std::optional<std::string>>;

    /// Where the operation's way ends in the document before it. The new place of what it moves is
    /// looked up after that was taken out.
    Stop stopOf(const Element& before, const PatchException& error) const {
        const JsonPointer pointer(error.path());
        if (!movesTo(error)) {
            return walk(before, pointer);
        }
        const JsonPointer from(operation(error).at("from").string());
        const Element& moved = from.get(before);
        if (!moved.parent()->isArray()) {
            return walk(before, pointer);
        }
        Stop stop = walk(before, beforeTaking(pointer, from));
        if (stop.second) {
            stop.second = pointer.steps()[JsonPointer::of(*stop.first).steps().size()];
        }
        return stop;
    }

    /// Whether there would be no error, or one at another place, with the value that the operation
    /// moves still in its former place.
    bool isOfTaking(const Element& before, const PatchException& error) const {
        if (!movesTo(error)) {
            return false;
        }
        const Element patch = ko::Orvid::makeArray(
            {ko::Orvid::makeObject({{"op", "add"}, {"path", error.path()}, {"value", nullptr}})});
        Element tried = before;
        try {
            ko::Orvid::applyPatch(tried, patch);
        } catch (const PatchException& other) {
            Location at;
            Location otherAt;
            at.setElement(error);
            otherAt.setElement(other);
            return at.path != otherAt.path;
        }
        return true;
    }

    static constexpr const char* k_ofTaking =
        "; \"path\" is looked up after the value at \"from\" was taken out";

    /// Walks as far as the pointer leads.
    static Stop walk(const Element& root, const JsonPointer& pointer) {
        const Element* element = &root;
        for (const std::string& step : pointer.steps()) {
            JsonPointer next;
            next.push_back(step);
            const Element* const child = next.find(*element);
            if (child == nullptr) {
                return {element, step};
            }
            element = child;
        }
        return {element, std::nullopt};
    }

    Element beforeOperation(const Element& root, std::size_t number) const {
        const auto& all = given().array();
        Element first = ko::Orvid::makeArray({});
        for (std::size_t i = 0; i < number; ++i) {
            first.array().push_back(all[i]);
        }
        Element before = root;
        ko::Orvid::PatchOptions options;
        options.maxGrowth = 0;
        ko::Orvid::applyPatch(before, first, options);
        return before;
    }

    const Element& operation(const PatchException& error) const {
        return *given().item(error.number());
    }

    /// Whether a value was to be put at the place that the error names.
    bool putsAt(const PatchException& error) const {
        const std::string& name = error.operation();
        return (name == "add" || name == "move" || name == "copy") &&
               operation(error).at("path").string() == error.path();
    }

    /// The same for one that was taken out of another place before.
    bool movesTo(const PatchException& error) const {
        return error.operation() == "move" && putsAt(error) &&
               operation(error).at("from").string() != error.path();
    }

    /// What a test has found there: the value, or its type where that is too long for a line.
    static std::string thereIs(const Element& value) {
        constexpr std::size_t longest = 100;
        const std::string line = isContainer(value) ? "" : jsonLine(value, Layout());
        return ": " + (line.empty() || line.length() > longest ? typePhrase(value)
                                                               : line.substr(0, line.length() - 1));
    }

    static bool isContainer(const Element& value) { return value.isObject() || value.isArray(); }

    /// An operation that is malformed concerns no element of the document. The errors of lines stay
    /// with their lines, and say where it stands.
    Failure malformed(const Document& document, const PatchException& error,
                      const std::string& text) const {
        Failure operation =
            failureIn("[" + std::to_string(error.number()) + "]", ExitStatus::failed, text);
        if (document.location.line == 0) {
            return operation;
        }
        const Location& at = operation.location();
        const std::string position =
            at.line == 0 ? "" : ":" + std::to_string(at.line) + ":" + std::to_string(at.column);
        return {ExitStatus::failed, document.location, text + " (" + at.file + position + ")"};
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
        return {{JsonPointer(), JsonPointer()}};
    }
};

}  // namespace

std::unique_ptr<Verb> makePatch() { return std::make_unique<Patch>(); }

std::unique_ptr<Verb> makeMerge() { return std::make_unique<Merge>(); }

}  // namespace orvid_tool
