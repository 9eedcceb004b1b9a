// SPDX-License-Identifier: MIT
//
// Exceptions while memory is refused: they are copied and assigned whole or not at all, and what()
// gives the whole text or says that there is none.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "support/CountedMemory.h"
#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::FileException;
using ko::Orvid::KeyNotFound;
using ko::Orvid::LimitExceeded;
using ko::Orvid::Number;
using ko::Orvid::ParseErrorCode;
using ko::Orvid::ParseException;
using ko::Orvid::PatchException;
using ko::Orvid::PathNotFound;
using Range = ko::Orvid::ValueOutOfRange<Number, int>;
using TextRange = ko::Orvid::ValueOutOfRange<std::string, std::string>;
using WrongType = ko::Orvid::TypeException<ko::Orvid::EType>;

const std::string k_noText = "ko::Exception (its text could not be made)";

/// A text that is not held in place; that of a higher number is longer, so that assigning it needs
/// memory.
std::string longText(int number) {
    return "a text that is longer than what fits in place" +
           std::string(static_cast<std::size_t>(number) * 32, '.') + std::to_string(number);
}

std::string fieldsOf(const Exception&) { return {}; }
std::string fieldsOf(const KeyNotFound& error) { return error.key(); }
std::string fieldsOf(const PathNotFound& error) {
    return error.path() + error.key() + std::to_string(error.stoppedAt());
}
std::string fieldsOf(const WrongType& error) {
    return std::to_string(error.requested()) + std::to_string(error.got());
}
std::string fieldsOf(const FileException& error) {
    return error.file() + error.action() + error.reason() + std::to_string(error.error());
}
std::string fieldsOf(const LimitExceeded& error) {
    return error.option() + std::to_string(error.limit());
}
std::string fieldsOf(const PatchException& error) {
    return std::to_string(error.number()) + error.operation() + error.path() + error.reason();
}
std::string fieldsOf(const ParseException& error) {
    return error.message() + error.text() + std::to_string(static_cast<int>(error.code())) +
           std::to_string(static_cast<int>(error.expected())) + error.found().value_or('-') +
           std::to_string(error.firstLine()) + ":" + std::to_string(error.firstColumn()) + "-" +
           std::to_string(error.lastLine()) + ":" + std::to_string(error.lastColumn());
}
template<class Value, class Limit>
std::string fieldsOf(const ko::Orvid::ValueOutOfRange<Value, Limit>& error) {
    return compact(Element(error.value())) + compact(Element(error.min())) +
           compact(Element(error.max()));
}

/// All of it, without the addresses of what() in it.
template<class T>
std::string stateOf(const T& error) {
    return fieldsOf(error) + "|" + (error.elementPath() == nullptr ? "-" : *error.elementPath()) +
           "|" + (error.elementPointer() == nullptr ? "-" : *error.elementPointer()) + "|" +
           (error.cause() == nullptr ? "-" : error.cause()->what());
}

/// Does it again and again, while the first, the second, the third... request is refused, until it
/// passes. `run` makes and checks what it works on itself.
template<class Run>
void refuseEach(const Run& run) {
    bool isRefused = true;
    for (std::size_t number = 1; isRefused && !testing::Test::HasFailure(); ++number) {
        SCOPED_TRACE("request " + std::to_string(number) + " is refused");
        const std::size_t blocks = liveBlocks();
        isRefused = run(number);
        EXPECT_EQ(liveBlocks(), blocks) << "leaked";
        ASSERT_LT(number, 1000U) << "no end of requests";
    }
}

template<class Operation>
bool isThrownBy(const Operation& operation, std::size_t number, bool& isRefused) {
    bool isThrown = false;
    refuseAllocation(number, Refusal::once);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        isThrown = true;
    }
    isRefused = refuseNone();
    return isThrown;
}

/// An exception of that class, made for the item of a tree that lies below an empty key.
template<class T, class... Args>
T made(const char* path, const Args&... args) {
    const Element root = ko::Orvid::parse(
        R"({"a name that is not held in place":{"":[1,2]},"another of the same kind":{"":[3]}})");
    return T(&root.at(path).at("").at(0), args...);
}

constexpr const char* k_here = "a name that is not held in place";
constexpr const char* k_there = "another of the same kind";

template<class T>
void assignWithoutMemory(const T& one, const T& other) {
    refuseEach([&](std::size_t number) {
        T target(one);
        bool isRefused = false;
        const bool isThrown = isThrownBy([&] { target = other; }, number, isRefused);
        EXPECT_EQ(isThrown, isRefused);
        EXPECT_EQ(stateOf(target), stateOf(isThrown ? one : other));
        return isRefused;
    });
}

template<class T>
void cloneWithoutMemory(const T& one) {
    refuseEach([&](std::size_t number) {
        std::unique_ptr<const ko::Exception> copy;
        bool isRefused = false;
        const bool isThrown = isThrownBy([&] { copy.reset(one.clone()); }, number, isRefused);
        EXPECT_EQ(isThrown, isRefused);
        if (!isThrown) {
            EXPECT_EQ(stateOf(dynamic_cast<const T&>(*copy)), stateOf(one));
        }
        return isRefused;
    });
}

template<class T>
void showWithoutMemory(const T& one) {
    const std::string text = one.what();
    refuseEach([&](std::size_t number) {
        refuseAllocation(number, Refusal::once);
        const char* const shown = one.what();
        const bool isRefused = refuseNone();
        // Where a cause lacks its text, the rest is there.
        EXPECT_EQ(std::string(shown) == text, !isRefused);
        EXPECT_EQ(std::string(shown).find(k_noText) != std::string::npos, isRefused);
        EXPECT_EQ(one.what(), text);
        return isRefused;
    });
}

template<class T>
void holdWithoutMemory(const T& one, const T& other) {
    ASSERT_NE(stateOf(one), stateOf(other));
    assignWithoutMemory(one, other);
    cloneWithoutMemory(one);
    showWithoutMemory(one);
}

TEST(ErrorsWithoutMemory, plain_ones_are_copied_and_shown_whole_or_not_at_all) {
    const ko::RuntimeError cause(longText(1));
    holdWithoutMemory(Exception(longText(1), &cause), made<Exception>(k_there));
}

TEST(ErrorsWithoutMemory, of_missing_keys_and_paths_are_whole) {
    holdWithoutMemory(made<KeyNotFound>(k_here, longText(1)),
                      made<KeyNotFound>(k_there, longText(2)));
    holdWithoutMemory(made<PathNotFound>(k_here, longText(1), longText(3)),
                      made<PathNotFound>(k_there, longText(2), longText(4)));
}

TEST(ErrorsWithoutMemory, of_types_and_ranges_are_whole) {
    using namespace ko::Orvid;
    holdWithoutMemory(made<WrongType>(k_here, etArray, etNull),
                      made<WrongType>(k_there, etString, etNumber));
    holdWithoutMemory(made<Range>(k_here, Number("123456789012345678901234567890"), 1, 2),
                      made<Range>(k_there, Number("-12345678901234567890.123456789"), 3, 4));
    holdWithoutMemory(TextRange(longText(1), longText(2), longText(3)),
                      TextRange(longText(4), longText(5), longText(6)));
}

TEST(ErrorsWithoutMemory, of_files_patches_and_limits_are_whole) {
    const ko::RuntimeError cause(longText(1));
    holdWithoutMemory(FileException(longText(1), longText(2), longText(3), 4, &cause),
                      FileException(longText(5), longText(6), longText(7), 8));
    holdWithoutMemory(
        made<PatchException>(k_here, std::size_t{1}, "add", longText(2), longText(3)),
        made<PatchException>(k_there, std::size_t{4}, longText(5), longText(6), longText(7)));
    holdWithoutMemory(made<LimitExceeded>(k_here, longText(1), longText(2), std::uint64_t{3}),
                      made<LimitExceeded>(k_there, longText(4), longText(5), std::uint64_t{6}));
}

ParseException parseError(const char* path, int number) {
    auto error = made<ParseException>(path, longText(number), number, 2, 3, 4);
    error.addText(longText(number + 1));
    error.addFound(number == 1 ? ']' : '}', ko::Orvid::ExpectedToken::comma);
    return error.withCode(ParseErrorCode::syntax);
}

TEST(ErrorsWithoutMemory, of_texts_are_whole) {
    holdWithoutMemory(parseError(k_here, 1), parseError(k_there, 3));
}

TEST(ErrorsWithoutMemory, get_their_text_and_code_or_stay_as_they_were) {
    const auto error = made<ParseException>(k_here, longText(1), 1, 2, 3, 4);
    refuseEach([&](std::size_t number) {
        ParseException target(error);
        bool isRefused = false;
        const bool isThrown = isThrownBy([&] { target.addText(longText(2)); }, number, isRefused);
        EXPECT_EQ(isThrown, isRefused);
        EXPECT_EQ(target.text(), isThrown ? "" : longText(2));
        target.addText(longText(3));
        EXPECT_EQ(target.text(), longText(isThrown ? 3 : 2));
        return isRefused;
    });
    refuseEach([&](std::size_t number) {
        ParseException target(error);
        bool isRefused = false;
        const bool isThrown = isThrownBy(
            [&] { target = error.withCode(ParseErrorCode::querySyntax); }, number, isRefused);
        EXPECT_EQ(target.code() == ParseErrorCode::querySyntax, !isThrown);
        return isRefused;
    });
}

}  // namespace
}  // namespace orvid_test
