// SPDX-License-Identifier: MIT
//
// Reading strictly: what may be lost or misunderstood is an error, and an error is shown where it
// stands. Also a document that comes in pieces, and limits for text from strangers.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void show(const std::string& text, const ReadOptions& options) {
    Element root;
    try {
        DomParser(options).parse(root, text);
        std::cout << "read: " << root;
    } catch (const ParseException& error) {
        std::cout << error.firstLine() << ":" << error.firstColumn() << ": " << error.message()
                  << ", in \"" << *error.elementPath() << "\"\n"
                  << sourceExcerpt(text, error);
    }
}

/// The pieces may be cut anywhere: the tree and an error's place are those of the whole text.
void readInPieces(Element& root) {
    DomParser parser(ReadOptions::strict());
    parser.begin(root);
    for (const char* const piece : {"{\"na", "me\": \"caf\xC3", "\xA9\", \"n\": 4", "2}"}) {
        parser.feed(piece);
    }
    parser.finish();
}

}  // namespace

int main() {  // NOLINT(bugprone-exception-escape): an example lets what it does not expect end it
    const ReadOptions strict = ReadOptions::strict();
    show("42", strict);
    show("{\"port\": 80,\n \"host\": \"alpha}", strict);
    show("{\"list\": [1, 2,]}", strict);
    show("{} {}", strict);
    show("{\"host\": \"a\",\n \"port\": 80, \"host\": \"b\"}", strict);
    show(R"({"name": "caf\u00e9 \ud83d!"})", strict);
    show("{\"name\": \"caf\xE9\"}", strict);

    ReadOptions limits = ReadOptions::strict();
    limits.maxDepth = 2;
    limits.maxLength = 1000;
    show("[1, /* two */ 2]", limits);
    show("[[[1]]]", limits);

    Element root;
    readInPieces(root);
    std::cout << "from pieces: " << root.get("name");
}
