// SPDX-License-Identifier: MIT
//
// The library's documents that keep their text, for the command's.

#include "edit/Kept.h"

#include <string>
#include <utility>

#include "output/Color.h"
#include "output/Layout.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

}  // namespace

bool keepsText(const SCall& call) { return !call.lines.isOn && !call.layout.isAsked; }

void readForEdit(const SCall& call, Document& document) {
    if (call.lines.isOn) {
        readTree(document.place, document.text, document.root);
        return;
    }
    try {
        document.kept.emplace(Dom::parse(
            document.text, call.isStrict ? ReadOptions::strict() : ReadOptions::jsonc()));
    } catch (const ParseException& error) {
        throw faultOf(document.place, document.text, error);
    }
    document.root = std::move(**document.kept);
}

void appendEdited(const SCall& call, Document& document, Bytes& out) {
    if (!keepsText(call)) {
        out.append(jsonText(document.root, call.layout));
        return;
    }
    **document.kept = std::move(document.root);
    const std::string text = document.kept->text();
    out.append(call.layout.isColored ? colored(text) : text);
}

}  // namespace orvid_tool
