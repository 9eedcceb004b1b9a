// SPDX-License-Identifier: MIT
//
// The library's scanner beside simdjson as a source of tokens: keys and strings with their escapes
// resolved, numbers as text, and no tree. README.md has the table and says how to count
// instructions.
// usage: orvid_bench_scanners ROUNDS FILE...

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "text/TextScannerRun.h"

namespace {

using namespace ko::Orvid;
using simdjson::ondemand::json_type;

/// What a pass has seen. All passes over one text must agree.
struct Seen {
    std::uint64_t values = 0;
    std::uint64_t bytes = 0;
};

class Counter : public TokenSink {
public:
    void null(TokenSpan /*span*/) { ++seen.values; }
    void boolean(bool /*value*/, TokenSpan /*span*/) { ++seen.values; }
    void number(std::string_view text, TokenSpan /*span*/) { take(text); }
    void string(std::string_view text, TokenSpan /*span*/) { take(text); }
    bool key(std::string_view text, TokenSpan /*span*/) {
        seen.bytes += text.size();
        return true;
    }
    void openObject(TokenSpan /*span*/) { ++seen.values; }
    void openArray(TokenSpan /*span*/) { ++seen.values; }

    Seen seen;

private:
    void take(std::string_view text) {
        ++seen.values;
        seen.bytes += text.size();
    }
};

Seen scan(const std::string& text, const ReadOptions& options) {
    Counter counter;
    TextScanner scanner(options);
    scanner.scan(text, counter);
    scanner.finish(counter);
    if (scanner.error()) {
        throw std::runtime_error(scanner.error()->message);
    }
    return counter.seen;
}

/// On demand, simdjson takes the whitespace after a number along.
std::string_view withoutWhitespace(std::string_view token) {
    return token.substr(0, token.find_last_not_of(" \t\r\n") + 1);
}

void walk(simdjson::ondemand::value value, Seen& seen) {
    ++seen.values;
    switch (json_type(value.type())) {
        case json_type::array:
            for (auto item : value.get_array()) {
                walk(item.value(), seen);
            }
            break;
        case json_type::object:
            for (auto member : value.get_object()) {
                seen.bytes += std::string_view(member.unescaped_key()).size();
                walk(member.value(), seen);
            }
            break;
        case json_type::string:
            seen.bytes += std::string_view(value.get_string()).size();
            break;
        case json_type::number:
            seen.bytes += withoutWhitespace(value.raw_json_token()).size();
            break;
        case json_type::boolean:
        case json_type::null:
            break;
    }
}

/// One text and the passes over it.
class Contest {
public:
    explicit Contest(const char* file) : m_text(read(file)), m_padded(m_text) {}

    [[gnu::noinline]] Seen strict() const { return scan(m_text, ReadOptions::strict()); }
    [[gnu::noinline]] Seen lenient() const { return scan(m_text, ReadOptions()); }
    [[gnu::noinline]] Seen onDemand() {
        Seen seen;
        simdjson::ondemand::document document = m_onDemand.iterate(m_padded);
        walk(document.get_value(), seen);
        return seen;
    }

    double bytes() const { return static_cast<double>(m_text.size()); }

private:
    static std::string read(const char* file) {
        std::ifstream in(file, std::ios::binary);
        if (!in) {
            throw std::runtime_error(std::string("cannot read ") + file);
        }
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string m_text;
    simdjson::padded_string m_padded;
    simdjson::ondemand::parser m_onDemand;
};

constexpr std::array<const char*, 3> k_names = {"strict", "lenient", "simdjson"};

Seen pass(Contest& contest, std::size_t which) {
    switch (which) {
        case 0:
            return contest.strict();
        case 1:
            return contest.lenient();
        default:
            return contest.onDemand();
    }
}

void expectSame(const Seen& seen, const Seen& first) {
    if (seen.values != first.values || seen.bytes != first.bytes) {
        throw std::runtime_error("the passes have not seen the same");
    }
}

/// The passes take turns, so that a slow moment of the machine strikes all.
void measure(const char* file, int rounds) {
    using Clock = std::chrono::steady_clock;
    Contest contest(file);
    const Seen first = contest.strict();
    std::array<std::vector<double>, k_names.size()> times;
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t which = 0; which < times.size(); ++which) {
            const Clock::time_point begin = Clock::now();
            expectSame(pass(contest, which), first);
            times[which].push_back(
                std::chrono::duration<double, std::nano>(Clock::now() - begin).count());
        }
    }
    std::printf("%s\n", file);
    for (std::size_t which = 0; which < times.size(); ++which) {
        std::sort(times[which].begin(), times[which].end());
        std::printf("    %-8s %.3f ns a byte (median), %.3f (least)\n", k_names[which],
                    times[which][times[which].size() / 2] / contest.bytes(),
                    times[which].front() / contest.bytes());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || std::atoi(argv[1]) < 1) {
        std::fputs("usage: orvid_bench_scanners ROUNDS FILE...\n", stderr);
        return 2;
    }
    try {
        for (int file = 2; file < argc; ++file) {
            measure(argv[file], std::atoi(argv[1]));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvid_bench_scanners: %s\n", error.what());
        return 1;
    }
}
