// SPDX-License-Identifier: MIT
//
// Reading Markdown line by line.

#include "docs/Markdown.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>
#include <utility>

namespace orvid_test {

namespace {

const std::string k_fence = "```";

bool isFence(const std::string& line) { return line.compare(0, k_fence.length(), k_fence) == 0; }

Lines withoutIndent(const Lines& lines) {
    std::size_t common = std::string::npos;
    for (const std::string& line : lines) {
        common = std::min(common, line.find_first_not_of(' '));
    }
    Lines result;
    for (const std::string& line : lines) {
        result.push_back(line.substr(std::min(common, line.length())));
    }
    return result;
}

std::string anchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_') {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (c == ' ') {
            anchor += '-';
        }
    }
    return anchor;
}

/// The cells of a line `| a | b |`.
Lines cellsOf(const std::string& line) {
    Lines cells;
    std::string cell;
    for (std::size_t i = 1; i < line.length(); ++i) {
        if (line[i] == '|' && line[i - 1] == '\\') {
            cell.back() = '|';
        } else if (line[i] == '|') {
            cells.push_back(std::exchange(cell, {}));
        } else {
            cell += line[i];
        }
    }
    return cells;
}

bool isRow(const std::string& line) { return line.compare(0, 1, "|") == 0; }

bool isRuler(const std::string& line) { return line.compare(0, 4, "|---") == 0; }

}  // namespace

Lines linesOf(const std::string& text) {
    Lines lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<FencedBlock> fencedBlocks(const Lines& document) {
    std::vector<FencedBlock> blocks;
    bool isOpen = false;
    for (std::size_t i = 0; i < document.size(); ++i) {
        if (isFence(document[i]) && !isOpen) {
            blocks.push_back({i + 1, document[i].substr(k_fence.length()),
                              i == 0 ? std::string() : document[i - 1], Lines()});
            isOpen = true;
        } else if (isFence(document[i])) {
            isOpen = false;
        } else if (isOpen) {
            blocks.back().lines.push_back(document[i]);
        }
    }
    return blocks;
}

std::vector<Lines> tableRows(const Lines& document) {
    std::vector<Lines> rows;
    bool isOpen = false;
    bool isBody = false;
    for (const std::string& line : document) {
        isOpen = isOpen != isFence(line);
        if (!isOpen && isBody && isRow(line)) {
            rows.push_back(cellsOf(line));
        }
        isBody = isRow(line) && (isBody || isRuler(line));
    }
    return rows;
}

Lines codeSpans(const std::string& text) {
    static const std::regex span("`([^`]*)`");
    Lines spans;
    for (std::sregex_iterator i(text.begin(), text.end(), span), end; i != end; ++i) {
        spans.push_back((*i)[1]);
    }
    return spans;
}

std::vector<std::string> linkTargets(const Lines& document) {
    static const std::regex codeSpan("`[^`]*`");
    static const std::regex link(R"(\]\(([^)]*)\))");
    std::vector<std::string> targets;
    bool isOpen = false;
    for (const std::string& line : document) {
        isOpen = isOpen != isFence(line);
        const std::string prose = isOpen ? std::string() : std::regex_replace(line, codeSpan, "`");
        for (std::sregex_iterator i(prose.begin(), prose.end(), link), end; i != end; ++i) {
            targets.push_back((*i)[1]);
        }
    }
    return targets;
}

std::vector<std::string> headingAnchors(const Lines& document) {
    std::vector<std::string> anchors;
    bool isOpen = false;
    for (const std::string& line : document) {
        isOpen = isOpen != isFence(line);
        const std::size_t start = line.find_first_not_of('#');
        const bool isHeading = !isOpen && start != 0 && start != std::string::npos;
        if (isHeading && line[start] == ' ') {
            anchors.push_back(anchorOf(line.substr(start + 1)));
        }
    }
    return anchors;
}

bool containsLines(const Lines& text, const Lines& lines) {
    const Lines wanted = withoutIndent(lines);
    const auto count = static_cast<std::ptrdiff_t>(lines.size());
    for (auto start = text.begin(); count > 0 && text.end() - start >= count; ++start) {
        if (withoutIndent(Lines(start, start + count)) == wanted) {
            return true;
        }
    }
    return false;
}

}  // namespace orvid_test
