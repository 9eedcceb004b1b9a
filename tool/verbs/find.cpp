// SPDX-License-Identifier: MIT
//
// orvid find: the item of an array that holds a value.

#include <ko/Orvid/Array.h>

#include <algorithm>

#include "call/Options.h"
#include "edit/Answer.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "input/ValueWord.h"
#include "input/withPath.h"
#include "output/phrases.h"
#include "output/placeWord.h"
#include "verbs/Leaves.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

class Find : public DocumentVerb {
public:
    const char* name() const override { return "find"; }
    const char* help() const override {
        return "Write the first item of an array that has a value at a path";
    }
    const char* examples() const override {
        return "  orvid find --in servers host '\"beta.example\"' settings.json\n"
               "  orvid find --in servers --path host '\"beta.example\"' settings.json\n"
               "  orvid find '' 3 <numbers.json";
    }

    void addWords(Words& words, Call& call) override {
        words.required("ITEMPATH", m_itemPath,
                       "where in an item the value is; empty for the item itself");
        words.required("VALUE", m_json, "the value: JSON text, string:TEXT and other forms");
        addFiles(words, call);
        words.option("--in", m_arrayPath, "PATH", "the array, by default the document's root");
        words.flag("--path", m_isPathWanted, "write the item's path and not the item");
        addRaw(words, call);
        addLayout(words, call);
        addStrict(words, call);
        addLines(words, call);
    }

    void prepare(Call& call) override {
        requireNoFile("ITEMPATH", m_itemPath, call.files);
        m_array = CallPath(m_arrayPath);
        m_item = CallPath(m_itemPath);
        if (readsInput(m_json) && isInputAmong(call.files)) {
            throw UsageError("VALUE and FILE cannot both be standard input");
        }
        readValue(call);
    }

private:
    void readValue(const Call& call) {
        try {
            readValueWord(m_json, m_value, call.isStrict);
        } catch (const Failure&) {
            if (!call.files.empty() || !isFileThere(m_json)) {
                throw;
            }
            throw UsageError(missingValue(m_json));
        }
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        const Element& root = document.root;
        const Element& array = m_array.get(root);
        if (!array.isArray()) {
            const char* const hint = &array == &root ? "; --in PATH names an array within" : "";
            throw failure(document, array,
                          std::string(typePhrase(array)) + " has no items to find" + hint);
        }
        const Element* const item = firstMatch(array.array());
        if (item == nullptr) {
            throw failure(document, array, "no item has that value");
        }
        if (m_isPathWanted) {
            out.append(pathOnOneLine(placeWord(*item)) + "\n");
        } else {
            appendAnswer(call, *item, out);
        }
    }

    const Element* firstMatch(const Element::TArray& items) const {
        if (!m_item.isPlain()) {
            return firstWhere(items, [&](const Element& item) { return m_item.find(item); });
        }
        return withPath(m_item.word(), [&](const Path& path) {
            return firstWhere(items, [&](const Element& item) {
                return &item.tryGet(path, Element::k_emptyElement);
            });
        });
    }

    /// The first item of which the place that `valueOf` finds, or null, has the value.
    template<class ValueOf>
    const Element* firstWhere(const Element::TArray& items, const ValueOf& valueOf) const {
        const auto found = std::find_if(items.begin(), items.end(), [&](const Element& item) {
            const Element* const value = valueOf(item);
            return value != nullptr && *value == m_value;
        });
        return found == items.end() ? nullptr : &*found;
    }

    static Failure failure(const Document& document, const Element& array,
                           const std::string& text) {
        Location location = document.location;
        location.setElement(array);
        return {ExitStatus::failed, location, text};
    }

    std::string m_itemPath;
    std::string m_json;
    std::string m_arrayPath;
    CallPath m_array;
    CallPath m_item;
    bool m_isPathWanted = false;
    Element m_value;
};

}  // namespace

std::unique_ptr<Verb> makeFind() { return std::make_unique<Find>(); }

}  // namespace orvid_tool
