// SPDX-License-Identifier: MIT
//
// A tour of the main job. Reads each document named on the command line, lists its first elements
// with their paths and types, shows what its own schema has for members that are missing and what a
// double would make of its numbers, and writes it back without "meta". Of long documents it writes
// sizes only.

#include <ko/Orvid.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace ko::Orvid;

constexpr std::size_t k_shownElements = 12;
constexpr std::size_t k_shownBytes = 2000;

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios_base::binary);
    if (!in) {
        throw ko::RuntimeError("cannot open " + file.string());
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void parse(Element& root, const std::string& text) {
    DomParser parser;
    parser.parse(root, text + "\n");  // a number at the top needs something after it
    if (parser.state() != 0) {
        throw ko::RuntimeError("the text ends early, at \"" + parser.openElement()->path() + "\"");
    }
}

/// The element and all below it in the order of the text, except for the document's own
/// description.
void collect(const Element& element, std::vector<const Element*>& found) {
    found.push_back(&element);
    if (element.isArray()) {
        for (const Element& item : element.array()) {
            collect(item, found);
        }
    } else if (element.isObject()) {
        for (const auto& [key, value] : element.object()) {
            if (value.path() != Path::k_meta) {
                collect(value, found);
            }
        }
    }
}

std::string nameOf(EType type) {
    std::ostringstream name;
    name << type;
    return name.str();
}

std::string valueOf(const Element& element) {
    if (element.isObject()) {
        return "members: " + std::to_string(element.object().size()) + "\n";
    }
    if (element.isArray()) {
        return "items: " + std::to_string(element.array().size()) + "\n";
    }
    return Generator().encode(element);
}

void showLine(const std::string& path, const Element& element) {
    std::cout << "  " << std::left << std::setw(18) << (path.empty() ? "(root)" : path)
              << std::setw(11) << nameOf(element.type()) << valueOf(element);
}

void showFirst(const std::vector<const Element*>& elements) {
    std::cout << "the first of them:\n";
    for (std::size_t i = 0; i < elements.size() && i < k_shownElements; ++i) {
        showLine(elements[i]->path(), *elements[i]);
    }
}

/// The schema path of a member leads to its description, so the way back leads to the member.
void showDefaults(const Element& root) {
    const Element* const described = Path::tryGetElement("meta.schema.properties", root, etObject);
    if (described == nullptr) {
        return;
    }
    std::cout << "missing, but with a default in the document's schema:\n";
    for (const auto& [key, description] : described->object()) {
        const Path path = Path::fromSchemaPath(description.path());
        const Element& byDefault = root.tryGetDefault(path, Element::k_emptyElement);
        if (!root.pathExists(path) && !byDefault.isEmpty()) {
            showLine(path.str(), byDefault);
        }
    }
}

/// The first number that a double would change, with what it would become.
void showExactness(const std::vector<const Element*>& elements) {
    for (const Element* const element : elements) {
        if (!element->isNumber()) {
            continue;
        }
        const ko::DecNumber exact(element->number().toString());
        const ko::DecNumber rounded(static_cast<double>(exact));
        if (exact.compare(rounded) != 0) {
            std::cout << "kept as it was written:\n";
            showLine(element->path(), *element);
            std::cout << "  where a double would have made it ";
            rounded.writeTo(std::cout) << "\n";
            return;
        }
    }
}

void writeBack(Element& root) {
    Dom document;
    document.setRoot(root, false);
    const std::string text = Generator().encode(document);
    std::cout << "written back without \"meta\": " << text.length() << " bytes\n";
    if (text.length() <= k_shownBytes) {
        std::cout << text;
    }
}

void tour(const std::filesystem::path& file) {
    const std::string text = readFile(file);
    Element root;
    parse(root, text);
    std::vector<const Element*> elements;
    collect(root, elements);
    std::cout << file.filename().string() << ": " << text.length() << " bytes, " << elements.size()
              << " elements besides \"meta\"\n";
    showFirst(elements);
    showDefaults(root);
    showExactness(elements);
    writeBack(root);
    std::cout << "\n";
}

}  // namespace

int main(int argc, char** argv) {
    try {
        for (int i = 1; i < argc; ++i) {
            tour(argv[i]);
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "tour: " << error.what() << "\n";
        return 1;
    }
}
