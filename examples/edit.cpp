// SPDX-License-Identifier: MIT
//
// Editing by path: each line shows one call with the document before and after it, or what it
// throws and the document that it leaves.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

/// The element on one line, for documents whose strings hold no newline.
std::string oneLine(const Element& element) {
    std::string line;
    bool isIndent = false;
    for (const char c : Generator().encode(element)) {
        isIndent = c == '\n' || (isIndent && c == ' ');
        if (!isIndent) {
            line += c == ',' ? ", " : std::string(1, c);
        }
    }
    return line;
}

template<class Action>
void edit(const char* call, const char* before, const Action& action) {
    Element root = parse(before);
    std::cout << call << "\n    " << before << "\n";
    try {
        action(root);
    } catch (const PathNotFound& error) {
        std::cout << "    throws PathNotFound: no \"" << error.key() << "\" at \""
                  << *error.elementPath() << "\"\n";
    }
    std::cout << "    " << oneLine(root) << "\n";
}

#define EDIT(before, call) edit(#call, before, [](Element& root) { call; })

void showCreate() {
    EDIT("{}", root.create("a.b", 5));
    EDIT(R"({"a": 1, "b": 2})", root.create("a", 5));
    EDIT("[1, 2]", root.create("[*]", 5));
    EDIT("[1, 2]", root.create("[0]", 5));
    EDIT("[1, 2]", root.create("[2]", 5));
    EDIT(R"({"a": "text"})", root.create("a.b", 5));
    EDIT("{}", root.create("a.b[0]", 5));
    EDIT(R"({"a": {"b": 1}})", root.create("a.b", root));
}

void showUpdate() {
    EDIT(R"({"a": 1})", root.update("a", 5));
    EDIT(R"({"a": 1})", root.update("b", 5));
    EDIT(R"({"a": 1})", root.tryUpdate("b", 5));
}

void showInsert() {
    EDIT("{}", root.insert("a.b", 5));
    EDIT("{}", root.create("a.b", 5));
    EDIT("{}", root.create("a\\.b", 5));
}

void showRemove() {
    EDIT("[1, 5, 2]", root.remove(5));
    EDIT("[5, 5, 2, 5]", root.remove(5));
    EDIT(R"({"a": [{"id": 4}, {"id": 5}]})", root.remove(5, "id", "a"));
    EDIT(R"({"a": 1, "b": 2})", root.object().erase("a"));
    EDIT("[1, 2, 3]", root.array().erase(root.array().begin()));
}

/// Null is a value and never becomes a container; an empty element does.
void showFromNothing() {
    EDIT("null", root.create("a", 5));

    Element fresh = Element::k_emptyElement;
    fresh.create("a.b[*]", 5);
    std::cout << "from an empty element\n    " << oneLine(fresh) << "\n";
}

}  // namespace

int main() {
    showCreate();
    showUpdate();
    showInsert();
    showRemove();
    showFromNothing();
}
