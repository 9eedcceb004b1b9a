// SPDX-License-Identifier: MIT
//
// Values as text.

#include "output/Layout.h"

#include <ostream>
#include <streambuf>
#include <utility>

#include "output/Color.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::WriteOptions;

void requireWritable(const Generator& generator) {
    constexpr int replacedBytes = 6;
    if (generator.state() == replacedBytes) {
        throw Unwritable("holds bytes that are no UTF-8, which --ascii cannot write");
    }
}

WriteOptions ended(WriteOptions options) {
    options.finalNewline = true;
    return options;
}

template<class Value>
std::string textOf(const Value& value, const WriteOptions& options, bool isColored) {
    Generator generator(nullptr, ended(options));
    std::string text = generator.encode(value);
    requireWritable(generator);
    return isColored ? colored(text) : text;
}

/// Appends what is written to it.
class Appending : public std::streambuf {
public:
    explicit Appending(Bytes& out) : m_out(out) {}

private:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        m_out.append({text, static_cast<std::size_t>(count)});
        return count;
    }
    int_type overflow(int_type c) override {
        const char byte = traits_type::to_char_type(c);
        m_out.append({&byte, 1});
        return c;
    }

    Bytes& m_out;
};

}  // namespace

bool isPlain(const Layout& layout) {
    return !layout.options.sortKeys && !layout.options.asciiOnly && !layout.isColored;
}

std::string jsonText(const Element& element, const Layout& layout) {
    return textOf(element, layout.options, layout.isColored);
}

void appendText(const ko::Orvid::Dom& dom, const Layout& layout, Bytes& out) {
    if (layout.isColored) {
        out.append(textOf(dom, layout.options, true));
        return;
    }
    Appending buffer(out);
    std::ostream stream(&buffer);
    stream.exceptions(std::ios::badbit);  // it catches what is thrown otherwise
    Generator generator(nullptr, ended(layout.options));
    generator.encode(stream, dom);
    requireWritable(generator);
}

std::string jsonLine(const Element& element, const Layout& layout) {
    WriteOptions options = layout.options;
    options.indent.clear();
    return textOf(element, options, layout.isColored);
}

}  // namespace orvid_tool
