// SPDX-License-Identifier: MIT
//
// The same file read twice from a std::ifstream: by a DomParser, which may read it by pieces of its
// own, and by a subclass, whose text comes from the stream's buffer. Nobody may see a difference,
// not even in the position of the stream.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <fstream>
#include <string>

#include "support/BothReaders.h"

namespace orvid_test {

/// Where the stream is, what can be put back into it, and what comes next.
inline std::string standOf(std::istream& in) {
    std::string text = std::to_string(in.rdstate()) + ' ';
    in.clear();
    text += std::to_string(in.tellg()) + ' ';
    in.unget();
    text += static_cast<char>(in.get());
    std::string next(600, ' ');
    in.read(next.data(), static_cast<std::streamsize>(next.size()));
    return text + next.substr(0, static_cast<std::size_t>(in.gcount()));
}

/// What comes of a file of which `skipped` bytes were taken before.
template<class Parser>
std::string fileReport(const ko::Orvid::ReadOptions& options, const std::string& file,
                       std::size_t skipped) {
    ReadingReport report;
    std::ifstream in(file, std::ios_base::binary);
    in.ignore(static_cast<std::streamsize>(skipped));
    Parser parser(options);
    ko::Orvid::Element root("before");
    report.note(parser, root, [&] { parser.parse(root, in); });
    report.note(standOf(in));
    return report.text();
}

/// Both reports where they differ; empty where they do not.
inline std::string fileReadersDiffer(const ko::Orvid::ReadOptions& options, const std::string& file,
                                     std::size_t skipped = 0) {
    const auto scanner = fileReport<ko::Orvid::DomParser>(options, file, skipped);
    const auto events = fileReport<EventReader>(options, file, skipped);
    return scanner == events ? "" : "--- scanner\n" + scanner + "--- events\n" + events;
}

}  // namespace orvid_test
