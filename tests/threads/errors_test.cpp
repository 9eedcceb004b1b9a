// SPDX-License-Identifier: MIT
//
// One exception of each class, read by four threads at once, as happens to one that a std::future
// hands to all who wait for it.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cctype>
#include <future>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "support/Document.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using Error = std::unique_ptr<const ko::Exception>;

struct ErrorCase {
    const char* name;
    Error (*make)();
    std::string (*read)(const ko::Exception&);  ///< what its own class adds
};

std::ostream& operator<<(std::ostream& out, const ErrorCase& error) { return out << error.name; }

/// A text without the addresses in it, which are others in each exception.
std::string withoutAddresses(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        result += text[at];
        if (text.compare(at, 2, "0x") == 0) {
            for (++at; at + 1 < text.size() && std::isxdigit(text[at + 1]) != 0; ++at) {
            }
        }
    }
    return result;
}

std::string textOf(const std::string* text) { return text == nullptr ? "none" : *text; }

template<class T>
std::string shown(const T& value) {
    std::ostringstream out;
    out << value << ";";
    return out.str();
}

template<class T>
const T& as(const ko::Exception& error) {
    return dynamic_cast<const T&>(error);
}

/// What all exceptions have. The text of the first what() is read after the second.
std::string readBase(const ko::Exception& error) {
    const char* const text = error.what();
    std::string generated;
    error.generateWhat(generated);
    const Error cloned(error.clone());
    std::string all = cloned->what() + generated + error.what() + text + ko::Orvid::describe(error);
    if (const auto* const ours = dynamic_cast<const ko::Orvid::Exception*>(&error)) {
        all += textOf(ours->elementPath()) + textOf(ours->elementPointer());
    }
    if (error.cause() != nullptr) {
        all += error.cause()->what() + ko::Orvid::describe(*error.cause());
    }
    return withoutAddresses(all);
}

/// The item of a tree, the path of which the exception gets.
template<class T, class... Args>
Error makeAt(const Args&... args) {
    const Element root = ko::Orvid::parse(R"({"":[1,[2.50]],"a b":[3]})");
    return std::make_unique<T>(&root.at("").at(1), args...);
}

template<class T>
Error outOfRange() {
    using Range = ko::Orvid::ValueOutOfRange<Number, T>;
    using Limits = std::numeric_limits<T>;
    return makeAt<Range>(Number(0.1), Limits::lowest(), Limits::max());
}

template<class Range>
std::string readRange(const ko::Exception& error) {
    const Range& range = as<Range>(error);
    return shown(range.value()) + shown(range.min()) + shown(range.max());
}

template<class T>
ErrorCase rangeCase(const char* name) {
    return {name, outOfRange<T>, readRange<ko::Orvid::ValueOutOfRange<Number, T>>};
}

Error parseError() {
    try {
        ko::Orvid::parse("{\"a\": [1,\n  2 3]}");
    } catch (const ko::Exception& error) {
        return Error(error.clone());
    }
    return nullptr;
}

std::string readParseError(const ko::Exception& error) {
    const auto& parsing = as<ko::Orvid::ParseException>(error);
    const auto coded = parsing.withCode(ko::Orvid::ParseErrorCode::syntax);
    return parsing.message() + parsing.text() + shown(static_cast<int>(parsing.code())) +
           shown(static_cast<int>(coded.code())) + shown(static_cast<int>(parsing.expected())) +
           shown(*parsing.found()) + shown(parsing.firstLine()) + shown(parsing.firstColumn()) +
           shown(parsing.lastLine()) + shown(parsing.lastColumn()) +
           sourceExcerpt("{\"a\": [1,\n  2 3]}", parsing);
}

std::string readNothing(const ko::Exception&) { return {}; }

const std::vector<ErrorCase> k_errors = {
    {"base",
     [] {
         const ko::RuntimeError cause("the cause");
         return Error(new ko::Exception("the message", &cause));
     },
     readNothing},
    {"runtime error", [] { return Error(new ko::RuntimeError("the message")); }, readNothing},
    {"element", [] { return makeAt<ko::Orvid::Exception>(); }, readNothing},
    {"text", parseError, readParseError},
    {"key", [] { return makeAt<ko::Orvid::KeyNotFound>("key"); },
     [](const ko::Exception& error) { return as<ko::Orvid::KeyNotFound>(error).key(); }},
    {"path", [] { return makeAt<ko::Orvid::PathNotFound>("a.key", "key"); },
     [](const ko::Exception& error) {
         const auto& missing = as<ko::Orvid::PathNotFound>(error);
         return missing.path() + missing.key() + shown(missing.stoppedAt());
     }},
    {"type",
     [] {
         using ko::Orvid::etArray;
         return makeAt<ko::Orvid::TypeException<ko::Orvid::EType>>(ko::Orvid::etNumber, etArray);
     },
     [](const ko::Exception& error) {
         const auto& other = as<ko::Orvid::TypeException<ko::Orvid::EType>>(error);
         return shown(other.requested()) + shown(other.got());
     }},
    {"file",
     [] {
         const ko::RuntimeError cause("the cause");
         return Error(new ko::Orvid::FileException("a file", "read", "the cause", 2, &cause));
     },
     [](const ko::Exception& error) {
         const auto& file = as<ko::Orvid::FileException>(error);
         return file.file() + file.action() + file.reason() + shown(file.error());
     }},
    {"patch",
     [] { return makeAt<ko::Orvid::PatchException>(std::size_t{3}, "add", "/x/y", "no reason"); },
     [](const ko::Exception& error) {
         const auto& patch = as<ko::Orvid::PatchException>(error);
         return shown(patch.number()) + patch.operation() + patch.path() + patch.reason();
     }},
    {"limit",
     [] { return makeAt<ko::Orvid::LimitExceeded>("too much", "maxElements", std::uint64_t{5}); },
     [](const ko::Exception& error) {
         const auto& limit = as<ko::Orvid::LimitExceeded>(error);
         return limit.option() + shown(limit.limit());
     }},
    {"range of texts",
     [] {
         using Range = ko::Orvid::ValueOutOfRange<std::string, std::string>;
         return Error(new Range("1e999", "-1e308", "1e308"));
     },
     readRange<ko::Orvid::ValueOutOfRange<std::string, std::string>>},
    rangeCase<char>("range of char"),
    rangeCase<signed char>("range of signed char"),
    rangeCase<unsigned char>("range of unsigned char"),
    rangeCase<short>("range of short"),
    rangeCase<unsigned short>("range of unsigned short"),
    rangeCase<int>("range of int"),
    rangeCase<unsigned int>("range of unsigned int"),
    rangeCase<long>("range of long"),
    rangeCase<unsigned long>("range of unsigned long"),
    rangeCase<long long>("range of long long"),
    rangeCase<unsigned long long>("range of unsigned long long"),
    rangeCase<float>("range of float"),
    rangeCase<double>("range of double"),
    rangeCase<long double>("range of long double"),
};

std::string nameOfError(const testing::TestParamInfo<ErrorCase>& error) {
    return nameOf<ko::Exception>({{error.param.name, {}}, error.index});
}

class ErrorReaders : public testing::TestWithParam<ErrorCase> {};

TEST_P(ErrorReaders, read_one_exception_at_once) {
    const auto read = [](const Error& error) { return readBase(*error) + GetParam().read(*error); };
    readAtOnce(GetParam().make, read,
               [](const Error& error) { EXPECT_EQ(std::string(error->what()), error->what()); });
}

INSTANTIATE_TEST_SUITE_P(All, ErrorReaders, testing::ValuesIn(k_errors), nameOfError);

/// The text of the exception that the future holds.
std::string errorOf(const std::shared_future<int>& failed) {
    const std::shared_future<int> mine = failed;
    try {
        return std::to_string(mine.get());
    } catch (const ko::Orvid::Exception& error) {
        return withoutAddresses(error.what());
    }
}

TEST(ErrorThreads, catch_one_exception_of_a_shared_future) {
    const auto makeCold = [] {
        std::promise<int> promise;
        try {
            promise.set_value(ko::Orvid::parse("[1.5]").get("[0]").to<int>());
        } catch (const ko::Orvid::Exception&) {
            promise.set_exception(std::current_exception());
        }
        return promise.get_future().share();
    };
    readAtOnce(makeCold, errorOf, [](const std::shared_future<int>& failed) {
        EXPECT_NE(errorOf(failed).find("1.5"), std::string::npos);
    });
}

TEST(ErrorThreads, describe_one_error_with_its_place) {
    struct Failed {
        ko::Orvid::Dom dom = ko::Orvid::Dom::parse("{\n  \"n\": 1.5\n}");
        Error error;
    };
    const auto makeCold = [] {
        Failed failed;
        try {
            (*failed.dom).get("n").to<int>();
        } catch (const ko::Exception& error) {
            failed.error.reset(error.clone());
        }
        return failed;
    };
    const auto read = [](const Failed& failed) { return describe(*failed.error, failed.dom); };
    readAtOnce(makeCold, read,
               [&](const Failed& failed) { EXPECT_EQ(read(failed).substr(0, 5), "2:8: "); });
}

}  // namespace
}  // namespace orvid_test
