// SPDX-License-Identifier: MIT
//
// Values as text.

#include "output/Layout.h"

#include <ostream>
#include <streambuf>

#include "output/Color.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::WriteOptions;

const Element& elementOf(const Element& element) { return element; }
const Element& elementOf(const ko::Orvid::Dom& dom) { return *dom; }

template<class Value>
void requireWritable(const Generator& generator, const Value& value) {
    constexpr int replacedBytes = 6;
    if (generator.state() == replacedBytes) {
        throw Unwritable("holds bytes that are no UTF-8, which --ascii cannot write",
                         elementOf(value));
    }
}

const Element& rootOf(const Element& element) {
    const Element* root = &element;
    while (root->parent() != nullptr) {
        root = root->parent();
    }
    return *root;
}

/// The place of the first value in it that is no JSON.
Location firstUnwritable(const Element& element) {
    Location place;
    try {
        static_cast<void>(ko::Orvid::serialize(element));
    } catch (const ko::Orvid::Exception& error) {
        place.setElement(error);
    }
    return place;
}

WriteOptions ended(WriteOptions options) {
    options.finalNewline = true;
    return options;
}

template<class Value>
std::string textOf(const Value& value, const WriteOptions& options, bool isColored) {
    Generator generator(nullptr, ended(options));
    std::string text = generator.encode(value);
    requireWritable(generator, value);
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

Unwritable::Unwritable(const char* why, const Element& element)
    : m_why(why), m_root(&rootOf(element)), m_place(firstUnwritable(element)) {}

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
    requireWritable(generator, dom);
}

std::string jsonLine(const Element& element, const Layout& layout) {
    WriteOptions options = layout.options;
    options.indent.clear();
    return textOf(element, options, layout.isColored);
}

}  // namespace orvid_tool
