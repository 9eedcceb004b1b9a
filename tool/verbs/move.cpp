// SPDX-License-Identifier: MIT
//
// orvid move and orvid copy: a value at another path as well, or instead.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "call/Options.h"
#include "edit/beforeTaking.h"
#include "edit/Insertion.h"
#include "edit/Kept.h"
#include "edit/Spelling.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "input/located.h"
#include "input/MissingPath.h"
#include "input/NewPath.h"
#include "input/PathSteps.h"
#include "output/Report.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::MovedPlaces;

/// Takes the element out of what holds it.
Element taken(Element& element) {
    Element& parent = *element.parent();
    if (parent.isObject()) {
        const auto member = parent.object().find(element.memberKey());
        Element value = std::move(member->second);
        parent.object().erase(member);
        return value;
    }
    auto& items = parent.array();
    const auto item = std::find_if(items.begin(), items.end(),
                                   [&](const Element& other) { return &other == &element; });
    Element value = std::move(*item);
    items.erase(item);
    return value;
}

bool isNewItem(const ValueStep& step) { return !step.isKey && step.index == ko::Orvid::k_noIndex; }

bool hasNewItem(const ValueSteps& steps) {
    return std::any_of(steps.begin(), steps.end(), isNewItem);
}

/// The path with each `[*]` made the last item there is, except for one at its end.
std::string withLastItems(const Element& root, const std::string& path) {
    const ValueSteps steps = stepsOf(path);
    std::ostringstream text;
    ko::Orvid::PathGenerator generator(text);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].isKey) {
            generator.genObjectProperty(steps[i].key);
        } else if (isNewItem(steps[i]) && i + 1 < steps.size()) {
            const std::size_t size = root.get(text.str()).size();
            generator.genListItem(static_cast<unsigned int>(size - 1));
        } else {
            generator.genListItem(steps[i].index);
        }
    }
    return text.str();
}

/// The last element on the way to a path that is there.
const Element& lastThere(const Element& root, const ko::Orvid::Path& path) {
    const Element* last = &root;
    const JsonPointer all = JsonPointer::fromPath(path);
    for (const std::string& key : all.steps()) {
        JsonPointer step;
        step.push_back(key);
        const Element* const next = step.find(*last);
        if (next == nullptr) {
            break;
        }
        last = next;
    }
    return *last;
}

/// The step to the new path, what holds it made where it is missing.
LastStep madeStep(Element& root, const LastStep& step) {
    const bool isNewOnWay = hasNewItem(stepsOf(step.holder().str()));
    if (isNewOnWay || !root.pathExists(step.holder())) {
        Element holder;
        const auto type = step.isKey() ? ko::Orvid::etObject : ko::Orvid::etArray;
        Element::create(holder.data(), type, &holder);
        root.create(step.holder(), holder);
    }
    return isNewOnWay ? LastStep(withLastItems(root, step.path())) : step;
}

/// There is no place for the value: what is at the failure's place has no such step.
class MissingTo : public Failure {
public:
    MissingTo(const Failure& failure, std::string step, bool isMade)
        : Failure(failure), m_step(std::move(step)), m_isMade(isMade) {}

    const std::string& step() const { return m_step; }
    /// Whether this call has made what is there.
    bool isMade() const { return m_isMade; }

private:
    std::string m_step;
    bool m_isMade;
};

std::optional<JsonPointer> placeOf(const Location& at) {
    return !at.path       ? std::nullopt
           : at.isPointer ? std::optional(JsonPointer(*at.path))
                          : std::optional(JsonPointer::fromPath(*at.path));
}

/// An element, and where it stood before the edit.
using FormerPlace = std::pair<JsonPointer, const Element*>;

/// A move, and the containers that it takes a value out of and puts it into: they are the same
/// afterwards, even where one of them then equals what another was.
class NotedMove {
public:
    NotedMove(const Element& root, const Element& source)
        : m_root(root), m_from(JsonPointer::of(source)), m_isItem(source.parent()->isArray()) {
        const Element* above = source.parent();
        for (int level = 0; above->parent() != nullptr && level < k_levels; ++level) {
            keep(JsonPointer::of(*above), *above);
            above = above->parent();
        }
        for (const Element* const item : itemsLike(source, *source.parent())) {
            keep(JsonPointer::of(*item), *item);
        }
    }

    /// The value was taken out, and is to be put into what is at the path, as far as that is there.
    void goInto(const ko::Orvid::Path& holder, const Element& value) {
        const Element* above = &lastThere(m_root, holder);
        for (const Element* const item : itemsLike(value, *above)) {
            keepNow(*item);
        }
        for (int level = 0; above->parent() != nullptr && level < k_levels; ++level) {
            keepNow(*above);
            above = above->parent();
        }
    }

    MovedPlaces places(const Element& moved) const {
        MovedPlaces places{{m_from, JsonPointer::of(moved)}};
        for (const auto& [before, element] : m_kept) {
            places.emplace_back(before, JsonPointer::of(*element));
        }
        return places;
    }

    /// Where what is there now stood before the value was taken out.
    JsonPointer placeBefore(const JsonPointer& now) const {
        return m_isItem ? beforeTaking(now, m_from) : now;
    }

private:
    /// Other items that equal the value, which are not to be taken for it.
    static std::vector<const Element*> itemsLike(const Element& value, const Element& container) {
        std::vector<const Element*> items;
        if (container.isArray()) {
            for (const Element& item : container.array()) {
                if (&item != &value && item == value) {
                    items.push_back(&item);
                }
            }
        }
        return items;
    }

    void keep(const JsonPointer& before, const Element& element) {
        if (m_steps > 0) {
            m_steps -= std::min(m_steps, before.steps().size());
            m_kept.emplace_back(before, &element);
        }
    }

    void keepNow(const Element& element) { keep(placeBefore(JsonPointer::of(element)), element); }

    /// So many levels above the value, and steps of all places: the document may be deep.
    static constexpr int k_levels = 32;
    std::size_t m_steps = 100000;

    const Element& m_root;
    const JsonPointer m_from;
    const bool m_isItem;
    std::vector<FormerPlace> m_kept;
};

class Carry : public DocumentVerb {
public:
    void addWords(Words& words, Call& call) override {
        words.required("FROM", m_fromWord, "a path such as a.b[3].c");
        words.required("TO", m_toWord, "the new place, where there is no member yet");
        addFiles(words, call);
        words.flag("--if-present", m_isMissingRight, "a FROM that is not there is no failure");
        words.flag("--if-absent", m_isOnlyForAbsent,
                   "where TO is a member that is there, leave the document alone");
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        requireNoFile("TO", m_toWord, call.files);
        m_from = CallPath(m_fromWord);
        if (m_isMissingRight) {
            m_from.requireLookup();
        }
        m_to = CallPath(m_toWord);
        noteName(call, m_from.word());
        noteName(call, m_to.word());
        if (m_to.isPlain() && m_to.word().substr(0, 1) != "$") {
            static_cast<void>(LastStep(m_to.word()));
        }
    }

protected:
    const CallPath& from() const { return m_from; }

    /// Returns the value in its new place. Or null, and the value is as it was, where there is a
    /// member and the call says to leave it alone.
    Element* put(Document& document, Element&& value) const {
        const std::string note =
            document.location.line == 0
                ? namingPlace(document, k_all, [&] { return noteFor(document.root); })
                : "";
        Element* const put = insert(document, std::move(value));
        if (put != nullptr && !note.empty()) {
            m_notes.push_back(note);
        }
        return put;
    }

    /// The same without a note.
    Element* insert(Document& document, Element&& value) const {
        std::size_t there = k_all;
        return namingPlace(document, there, [&]() -> Element* {
            const LastStep to(m_to.pathIn(document.root));
            there = JsonPointer::of(lastThere(document.root, to.holder())).steps().size();
            const LastStep step = madeStep(document.root, to);
            if (m_isOnlyForAbsent && isMemberThere(document.root, step)) {
                return nullptr;
            }
            return &insertAt(document.root, step, std::move(value), document.location);
        });
    }

    /// What is to hold the value, if it is there.
    ko::Orvid::Path holder(const Document& document) const {
        return namingPlace(document, k_all,
                           [&] { return LastStep(m_to.pathIn(document.root)).holder(); });
    }

private:
    std::string hintForFile(const std::string& /*word*/) const final {
        return namesFile(m_fromWord) ? "; FROM and TO stand before the file" : "";
    }

    /// What is said where something else may have been meant by a new place. A sum is not, and a
    /// new item on the way is.
    std::string noteFor(const Element& root) const {
        const std::string path = m_to.pathIn(root);
        const bool isSum = !path.empty() && (path.back() == '+' || path.back() == '-');
        if (isSum || hasNewItem(stepsOf(path))) {
            return "";
        }
        const std::string dotted = dottedKeyHint(root, path);
        const std::string hint = dotted.empty() ? newPathHint(root, m_to, path) : dotted;
        return hint.empty() ? hint : newPathNote(path, hint);
    }

    ExitStatus outcome(const Report& report) const final {
        for (const std::string& note : m_notes) {
            report.note(note);
        }
        return ExitStatus::done;
    }

    /// Carries the value to its new place and appends the document.
    virtual void carry(const Call& call, Document& document, Bytes& out) const = 0;

    void apply(const Call& call, Document& document, Bytes& out) const final {
        const Element* const from = m_from.find(document.root);
        const bool staysThere = from == nullptr ? m_isMissingRight : isAlreadyAtTo(*from, document);
        if (staysThere) {
            appendEdited(call, document, out);
        } else {
            carry(call, document, out);
        }
    }

    /// Whether it is the member that TO names, and such a one is to be left alone.
    bool isAlreadyAtTo(const Element& from, const Document& document) const {
        return m_isOnlyForAbsent && from.parent() != nullptr && from.parent()->isObject() &&
               m_to.find(document.root) == &from;
    }

    /// Where a place is missing the error names it as it was typed. What is more than `there` steps
    /// below the root was made by the action.
    template<class Action>
    auto namingPlace(const Document& document, const std::size_t& there, const Action& action) const
        -> decltype(action()) {
        try {
            return action();
        } catch (const ko::Orvid::PathNotFound& error) {
            const Failure failure = missingPlace(document.location, document.root, error, m_to);
            const std::optional<JsonPointer> place = placeOf(failure.location());
            throw MissingTo(failure, error.key(), place && place->steps().size() > there);
        }
    }

    static constexpr std::size_t k_all = std::string::npos;

    std::string m_fromWord;
    std::string m_toWord;
    CallPath m_from;
    CallPath m_to;
    bool m_isMissingRight = false;
    bool m_isOnlyForAbsent = false;
    mutable std::vector<std::string> m_notes;  ///< on whole documents, which one thread edits
};

class Move : public Carry {
public:
    const char* name() const override { return "move"; }
    const char* help() const override {
        return "Move the value at a path to another place and write the document";
    }
    const char* examples() const override {
        return "  orvid move limits.cpu cores settings.json\n"
               "  orvid move 'servers[-1]' 'servers[0]' -i settings.json";
    }

private:
    void read(const Call& call, Document& document) const override { readForEdit(call, document); }

    /// The document gets to know where the value went, so that its comments come along even where
    /// other values equal it.
    void carry(const Call& call, Document& document, Bytes& out) const override {
        Element& root = document.root;
        Element& source = from().get(root);
        if (source.parent() == nullptr) {
            Location at = document.location;
            at.setElement(source);
            throw Failure(ExitStatus::failed, std::move(at), "the root cannot be moved");
        }
        NotedMove move(root, source);
        Element value = taken(source);
        const Element* const moved = putOrRestore(call, document, move, std::move(value));
        if (moved == nullptr) {
            appendEdited(call, document, out);
            return;
        }
        const MovedPlaces places = move.places(*moved);
        appendEdited(call, document, out, places);
    }

    /// As put(). The document is as it was before the value was taken out, where that returns null
    /// or fails, so that an error finds its place in it.
    const Element* putOrRestore(const Call& call, Document& document, NotedMove& move,
                                Element&& value) const {
        const Element* moved = nullptr;
        try {
            move.goInto(holder(document), value);
            moved = put(document, std::move(value));
        } catch (const Failure& failure) {
            readForEdit(call, document);
            throw explained(failure, move, document);
        }
        if (moved == nullptr) {
            readForEdit(call, document);
        }
        return moved;
    }

    /// The failure with its place in the document as it was, and what the taking has to do with it.
    Failure explained(const Failure& failure, const NotedMove& move,
                      const Document& document) const {
        Failure before = isOfMade(failure) ? made(failure, document)
                                           : withPlaceBefore(failure, move, document.root);
        if (!isOfTaking(failure, move, document)) {
            return before;
        }
        return {before.status(), before.location(),
                before.text() + std::string("; TO is looked up after FROM was taken out"),
                before.excerpt()};
    }

    static bool isOfMade(const Failure& failure) {
        const auto* const missing = dynamic_cast<const MissingTo*>(&failure);
        return missing != nullptr && missing->isMade();
    }

    /// What was made is not there again, but another value may be at its place.
    static Failure made(const Failure& failure, const Document& document) {
        Location at = failure.location();
        at.isMade = true;
        const Failure ofNothing(failure.status(), at, failure.text(), failure.excerpt());
        return document.kept ? ofMade(ofNothing) : ofNothing;
    }

    static Failure withPlaceBefore(const Failure& failure, const NotedMove& move,
                                   const Element& root) {
        const std::optional<JsonPointer> now = placeOf(failure.location());
        const Element* const former = now ? move.placeBefore(*now).find(root) : nullptr;
        if (former == nullptr) {
            return failure;
        }
        Location at = failure.location();
        at.setElement(*former);
        return {failure.status(), std::move(at), failure.text(), failure.excerpt()};
    }

    /// Whether there would be a place for a value, or another error, with FROM still there.
    bool isOfTaking(const Failure& failure, const NotedMove& move, const Document& document) const {
        Document tried;
        tried.location = document.location;
        tried.root = document.root;
        try {
            insert(tried, Element(nullptr));
        } catch (const Failure& other) {
            const std::optional<JsonPointer> now = placeOf(failure.location());
            return (now ? std::optional(move.placeBefore(*now)) : now) !=
                       placeOf(other.location()) ||
                   isOfMade(failure) != isOfMade(other) || stepOf(failure) != stepOf(other);
        }
        return true;
    }

    static std::string stepOf(const Failure& failure) {
        const auto* const missing = dynamic_cast<const MissingTo*>(&failure);
        return missing == nullptr ? "" : missing->step();
    }
};

class Copy : public Carry {
public:
    const char* name() const override { return "copy"; }
    const char* help() const override {
        return "Copy the value at a path to another place and write the document";
    }
    const char* examples() const override {
        return "  orvid copy 'servers[0]' 'servers[*]' settings.json\n"
               "  orvid copy limits defaults.limits -i settings.json";
    }

private:
    void read(const Call& call, Document& document) const override {
        readForCopying(call, document);
    }

    /// A value that is moved brings its text along; a copy is a new one, which is spelled here.
    void carry(const Call& call, Document& document, Bytes& out) const override {
        const auto source = JsonPointer::of(from().get(document.root));
        const std::string_view spelling = escapedText(call, document, source);
        Element value = from().get(document.root);
        const Element* const put = this->put(document, std::move(value));
        if (put == nullptr) {
            appendEdited(call, document, out);
            return;
        }
        const auto copy = JsonPointer::of(*put);
        const std::size_t start = out.length();
        appendEdited(call, document, out);
        if (!spelling.empty()) {
            spellAs(spelling, call, copy, start, out);
        }
    }
};

}  // namespace

std::unique_ptr<Verb> makeMove() { return std::make_unique<Move>(); }

std::unique_ptr<Verb> makeCopy() { return std::make_unique<Copy>(); }

}  // namespace orvid_tool
