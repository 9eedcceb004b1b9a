// SPDX-License-Identifier: MIT
//
// The typed read of a number: the first from its text, and every further one, which finds the
// binary value.

#include <ko/Orvid/Number.h>

#include <charconv>
#include <memory>
#include <stdexcept>

#include "group.h"

namespace orvid_bench {

namespace {

using ko::Orvid::Number;

constexpr std::size_t k_count = 1000;

struct Numbers {
    std::vector<std::string> texts;
    std::vector<Number> numbers = std::vector<Number>(k_count);

    void forgetBinary() {
        for (std::size_t i = 0; i < k_count; ++i) {
            numbers[i].set(texts[i]);
        }
    }
    template<class Read>
    void readAll(const Read& read) const {
        for (const Number& number : numbers) {
            auto value = read(number);
            keep(&value);
        }
    }
};

/// The least that a second read can be: a comparison and a load.
struct Tagged {
    int kind;
    long long value;
};

template<class T>
Job conversionJob(const std::shared_ptr<Numbers>& numbers) {
    return {"std::from_chars", [numbers] {
                for (const std::string& text : numbers->texts) {
                    T value{};
                    std::from_chars(text.data(), text.data() + text.size(), value);
                    keep(&value);
                }
            }};
}

Group firstRead(const std::shared_ptr<Numbers>& integers) {
    Group group{"typed read of a number, first", "integers of 9 digits", {}};
    group.jobs = {
        {"orvid", [integers] { integers->readAll([](const Number& n) { return n.toLongLong(); }); },
         [integers] { integers->forgetBinary(); }},
        conversionJob<long long>(integers)};
    group.operations = k_count;
    group.noAllocations = "orvid";
    return group;
}

Group firstReadOfDoubles(const std::shared_ptr<Numbers>& doubles) {
    Group group{"typed read of a number, first", "doubles of 17 digits", {}};
    group.jobs = {
        {"orvid", [doubles] { doubles->readAll([](const Number& n) { return n.toDouble(); }); },
         [doubles] { doubles->forgetBinary(); }},
        conversionJob<double>(doubles)};
    group.operations = k_count;
    return group;
}

Group secondRead(const std::shared_ptr<Numbers>& integers) {
    const std::vector<Tagged> tagged(k_count, Tagged{1, 7});
    Group group{"typed read of a number, second", "integers of 9 digits", {}};
    group.jobs = {
        {"orvid",
         [integers] { integers->readAll([](const Number& n) { return n.toLongLong(); }); }},
        {"a comparison and a load", [tagged] {
             for (const Tagged& number : tagged) {
                 const long long value = number.kind == 1 ? number.value : 0;
                 keep(&value);
             }
         }}};
    group.operations = k_count;
    group.noAllocations = "orvid";
    return group;
}

}  // namespace

std::vector<Group> numberGroups() {
    const auto integers = std::make_shared<Numbers>();
    const auto doubles = std::make_shared<Numbers>();
    for (std::size_t i = 0; i < k_count; ++i) {
        integers->texts.push_back(std::to_string(123456789 + 7919 * i));
        doubles->texts.push_back("65.61361699997" + std::to_string(1000 + i));
    }
    integers->forgetBinary();
    doubles->forgetBinary();
    if (integers->numbers[1].toLongLong() != 123464708 ||
        !(doubles->numbers[0].toDouble() > 65.6)) {
        throw std::runtime_error("a number has another value than its text");
    }
    return {firstRead(integers), firstReadOfDoubles(doubles), secondRead(integers)};
}

}  // namespace orvid_bench
