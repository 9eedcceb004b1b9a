// SPDX-License-Identifier: MIT
//
// orvid unpaths: the document that lines of `orvid paths` describe.

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "call/Options.h"
#include "input/PathSteps.h"
#include "text/byteOrderMark.h"
#include "text/whitespace.h"
#include "verbs/Leaves.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

class Unpaths : public DocumentVerb {
public:
    const char* name() const override { return "unpaths"; }
    const char* help() const override {
        return "Write the document that lines of paths and values describe";
    }
    const char* examples() const override {
        return "  orvid unpaths leaves.txt\n"
               "  orvid paths settings.json | sed 's/8080/8443/' | orvid unpaths\n"
               "  orvid paths --json-pointer settings.json | orvid unpaths --json-pointer";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.flag("--json-pointer", m_isPointer, "the paths are JSON Pointers");
        words.number("--max-gap", m_mostInGaps, "COUNT",
                     "the most items that all paths together may pass over, 1000000 by default");
        addLayout(words, call);
    }

private:
    void read(const Call& /*call*/, Document& document) const override {
        document.root = Element::k_emptyElement;
        Location location = document.location;
        std::string_view rest = document.text;
        rest.remove_prefix(ko::Orvid::text::markLength(rest));
        Gaps gaps(m_mostInGaps);
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('\n'), rest.length());
            ++location.line;
            readLine(rest.substr(0, end), location, document.root, gaps);
            rest.remove_prefix(std::min(end + 1, rest.length()));
        }
        if (document.root.isEmpty()) {
            throw Failure(ExitStatus::failed, {document.location.file, 1, 1, std::string()},
                          "there is no line with a path");
        }
    }

    void readLine(std::string_view line, const Location& location, Element& root,
                  Gaps& gaps) const {
        if (ko::Orvid::text::isBlankLine(line)) {
            return;
        }
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) {
            throw failureIn(line, line.length(), location, "there is no tab after the path");
        }
        Element value;
        readValue(location, line, tab + 1, value);
        try {
            const std::string path = pathOfLine(line.substr(0, tab));
            Element& leaf = made(path, root, gaps);
            const bool isTaken = !leaf.isEmpty();
            leaf = value;
            if (isTaken) {
                throw Clash("path \"" + path + "\" has a value already", &leaf);
            }
        } catch (const Clash& problem) {
            Location at = location;
            if (problem.element() != nullptr) {
                at.setElement(*problem.element());
            }
            throw failureIn(line, 0, std::move(at), problem.what());
        } catch (const Failure& problem) {
            const std::size_t column = problem.location().column;
            throw failureIn(line, column == 0 ? 0 : column - 1, location, problem.text());
        }
    }

    /// The column of an error is that in the line, its path that in the document.
    void readValue(const Location& location, std::string_view line, std::size_t start,
                   Element& value) const {
        try {
            readTree(location, line.substr(start), value);
        } catch (const Failure& failure) {
            Location at = failure.location();
            at.column += at.column == 0 ? 0 : start;
            at.path = pathBelow(pathOfLine(line.substr(0, start - 1)), at.path.value_or(""));
            const std::size_t offset = at.column == 0 ? 0 : at.column - 1;
            throw failureIn(line, offset, std::move(at), failure.text());
        }
    }

    /// Nothing below a pointer, which is no path.
    std::optional<std::string> pathBelow(const std::string& path, const std::string& inner) const {
        if (isPointer(path)) {
            return std::nullopt;
        }
        const bool isKey = !path.empty() && !inner.empty() && inner.front() != '[';
        return path + (isKey ? "." : "") + inner;
    }

    /// Without the option those that lead below an empty key are.
    bool isPointer(const std::string& path) const { return m_isPointer || path.rfind('/', 0) == 0; }

    Element& made(const std::string& path, Element& root, Gaps& gaps) const {
        return isPointer(path) ? makeAt(root, pointerOf(path), gaps)
                               : makeAt(root, stepsOf(path), gaps);
    }

    static ko::Orvid::JsonPointer pointerOf(const std::string& text) {
        try {
            return ko::Orvid::JsonPointer(text);
        } catch (const ko::Orvid::ParseException& error) {
            throw malformedPath(text, error);
        }
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        out.append(jsonText(document.root, call.layout));
    }

    bool m_isPointer = false;
    std::uint64_t m_mostInGaps = 1000000;
};

}  // namespace

std::unique_ptr<Verb> makeUnpaths() { return std::make_unique<Unpaths>(); }

}  // namespace orvid_tool
