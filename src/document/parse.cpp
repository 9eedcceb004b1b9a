// SPDX-License-Identifier: MIT
//
// Whole documents in one call.

#include <ko/Orvid/parse.h>

#include <ko/Orvid/DomParser.h>

#include <limits>

namespace ko::Orvid {

namespace {

ReadOptions whole(ReadOptions options) {
    options.requireWholeDocument = true;
    return options;
}

}  // namespace

Element parse(std::string_view text, const ReadOptions& options) {
    Element root;
    DomParser parser(whole(options));
    if (text.size() <= std::numeric_limits<unsigned int>::max()) {
        parser.parse(root, text.data(), static_cast<unsigned int>(text.size()));
    } else {
        parser.begin(root);
        parser.feed(text);
        parser.finish();
    }
    return root;
}

Element parse(std::istream& in, const ReadOptions& options) {
    Element root;
    DomParser(whole(options)).parse(root, in);
    return root;
}

}  // namespace ko::Orvid
