// SPDX-License-Identifier: MIT
//
// Values as text.

#include "output/Layout.h"

#include <utility>

#include "output/Color.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::WriteOptions;

template<class Value>
std::string textOf(const Value& value, const WriteOptions& options, bool isColored) {
    constexpr int replacedBytes = 6;
    WriteOptions ended = options;
    ended.finalNewline = true;
    Generator generator(nullptr, ended);
    std::string text = generator.encode(value);
    if (generator.state() == replacedBytes) {
        throw Unwritable("holds bytes that are no UTF-8, which --ascii cannot write");
    }
    return isColored ? colored(text) : text;
}

}  // namespace

bool isPlain(const Layout& layout) {
    return !layout.options.sortKeys && !layout.options.asciiOnly && !layout.isColored;
}

std::string jsonText(const Element& element, const Layout& layout) {
    return textOf(element, layout.options, layout.isColored);
}

std::string jsonText(const ko::Orvid::Dom& dom, const Layout& layout) {
    return textOf(dom, layout.options, layout.isColored);
}

std::string jsonLine(const Element& element, const Layout& layout) {
    WriteOptions options = layout.options;
    options.indent.clear();
    return textOf(element, options, layout.isColored);
}

}  // namespace orvid_tool
