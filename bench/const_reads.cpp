// SPDX-License-Identifier: MIT
//
// The const operations on trees that nobody has read from yet, for callgrind: what it costs that
// numbers keep what they work out, and that any number of threads may ask for it.
// const_reads.sh counts and compares. It uses only what the library had before that was so.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <valgrind/callgrind.h>

#include <cstddef>
#include <functional>
#include <string>

namespace {

using ko::Orvid::Element;

constexpr int k_count = 100000;

std::string listOf(const std::function<std::string(int)>& text) {
    std::string list = "[";
    for (int i = 0; i < k_count; ++i) {
        list += (i == 0 ? "" : ",") + text(i);
    }
    return list + "]\n";
}

std::string integerText(int i) { return std::to_string(i * 7919L % 1000003L); }
std::string realText(int i) { return "-65." + std::to_string(100000000000000L + i * 7919L); }
std::string wordText(int i) { return "{\"id\":" + integerText(i) + ",\"name\":\"a name\"}"; }

void read(Element& element, const std::string& text) {
    ko::Orvid::DomParser().parse(element, text.data(), static_cast<unsigned int>(text.size()));
}

std::size_t g_sum = 0;

/// Counts `operation` on a tree of its own, and then once more on the same tree.
template<class Operation>
void count(const char* cold, const char* warm, const std::string& text,
           const Operation& operation) {
    Element tree;
    Element other;
    read(tree, text);
    read(other, text);
    const Element& constant = tree;
    for (const char* const name : {cold, warm}) {
        CALLGRIND_TOGGLE_COLLECT;
        operation(constant, other);
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(name);
    }
}

template<class T>
void convertAll(const Element& tree, const Element& /*other*/) {
    double sum = 0;
    for (const Element& item : tree.array()) {
        sum += item.to<T>();
    }
    g_sum += static_cast<std::size_t>(sum);
}

void printAll(const Element& tree, const Element& /*other*/) {
    for (const Element& item : tree.array()) {
        g_sum += item.number().toString().size();
    }
}

void compareAll(const Element& tree, const Element& other) { g_sum += tree == other ? 1U : 0U; }

void hashAll(const Element& tree, const Element& /*other*/) { g_sum += std::hash<Element>()(tree); }

void findNone(const Element& tree, const Element& /*other*/) {
    g_sum += tree.find(Element(2000000U)) == nullptr ? 1U : 0U;
}

}  // namespace

int main() {
    const std::string integers = listOf(integerText);
    const std::string reals = listOf(realText);
    const std::string records = listOf(wordText);
    count("none", "none", "[]\n", [](const Element&, const Element&) {});
    count("to<int>, integers, cold", "to<int>, integers, again", integers, convertAll<int>);
    count("to<double>, integers, cold", "to<double>, integers, again", integers,
          convertAll<double>);
    count("to<double>, 17 digits, cold", "to<double>, 17 digits, again", reals, convertAll<double>);
    count("toString, integers, cold", "toString, integers, again", integers, printAll);
    count("toString, 17 digits, cold", "toString, 17 digits, again", reals, printAll);
    count("==, integers, cold", "==, integers, again", integers, compareAll);
    count("==, records, cold", "==, records, again", records, compareAll);
    count("hash, integers, cold", "hash, integers, again", integers, hashAll);
    count("hash, records, cold", "hash, records, again", records, hashAll);
    count("find, integers, cold", "find, integers, again", integers, findNone);
    return g_sum == 0 ? 1 : 0;
}
