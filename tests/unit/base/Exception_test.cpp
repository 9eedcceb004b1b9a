// SPDX-License-Identifier: MIT
//
// Tests of ko::Exception and ko::RuntimeError: the text of what(), causes, copies and clones.

#include <ko/Exception.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace {

/// An exception with a text and a field of its own.
class NumberedError : public ko::Exception {
public:
    NumberedError(int number, const ko::Exception* cause = nullptr)
        : ko::Exception("base text", cause), m_number(number) {}

    void setNumber(int number) { m_number = number; }

    void generateWhat(std::string& out) const override {
        ko::Exception::generateWhat(out);
        out = "#" + std::to_string(m_number) + " " + out;
    }
    NumberedError* clone() const override { return new NumberedError(*this); }

private:
    int m_number;
};

/// An exception that fails to say what it is, after it has begun to.
class MuteError : public ko::Exception {
public:
    MuteError() : ko::Exception("never shown") {}

    void generateWhat(std::string& out) const override {
        out = "half a text";
        throw std::bad_alloc();
    }
    MuteError* clone() const override { return new MuteError(*this); }
};

class Unclonable : public ko::Exception {
public:
    Unclonable() : ko::Exception("unclonable") {}
    Unclonable* clone() const override { throw std::bad_alloc(); }
};

TEST(Exception, shows_its_message) {
    const ko::Exception error("out of paper");
    EXPECT_STREQ(error.what(), "out of paper");
}

TEST(Exception, shows_an_empty_message) {
    const ko::Exception error("");
    EXPECT_STREQ(error.what(), "");
}

TEST(Exception, adds_the_text_of_its_cause) {
    const ko::Exception cause("no printer");
    const ko::Exception error("out of paper", &cause);
    EXPECT_STREQ(error.what(), "out of paper Cause: no printer");
}

TEST(Exception, adds_the_texts_of_a_chain_of_causes) {
    const ko::Exception first("one");
    const ko::Exception second("two", &first);
    const ko::RuntimeError third("three", &second);
    EXPECT_STREQ(third.what(), "three Cause: two Cause: one");
}

TEST(Exception, shows_what_the_most_derived_class_generates) {
    const NumberedError error(7);
    const ko::Exception& base = error;
    const std::exception& root = error;
    EXPECT_STREQ(base.what(), "#7 base text");
    EXPECT_STREQ(root.what(), "#7 base text");
}

TEST(Exception, keeps_the_type_of_its_cause) {
    const NumberedError cause(3);
    const ko::Exception error("failed", &cause);
    EXPECT_STREQ(error.what(), "failed Cause: #3 base text");
}

TEST(Exception, outlives_its_cause) {
    auto cause = std::make_unique<NumberedError>(3);
    const ko::Exception error("failed", cause.get());
    cause->setNumber(4);
    cause.reset();
    EXPECT_STREQ(error.what(), "failed Cause: #3 base text");
}

TEST(Exception, generates_anew_on_each_call_of_what) {
    NumberedError error(1);
    EXPECT_STREQ(error.what(), "#1 base text");
    error.setNumber(2);
    EXPECT_STREQ(error.what(), "#2 base text");
}

TEST(Exception, keeps_the_text_that_was_returned_while_it_is_the_same) {
    const ko::Exception error("a text that is too long to be stored inside the string object");
    const char* const text = error.what();
    EXPECT_EQ(error.what(), text);
}

TEST(Exception, leaves_the_text_of_one_object_alone_when_another_is_asked) {
    const ko::Exception one("one, with a text too long to be stored inside the string object");
    const ko::Exception other("other, with a text too long to be stored inside the string");
    const char* text = one.what();
    EXPECT_STREQ(other.what(), "other, with a text too long to be stored inside the string");
    EXPECT_STREQ(text, "one, with a text too long to be stored inside the string object");
}

TEST(Exception, replaces_the_text_it_generates_into) {
    const ko::Exception error("new");
    std::string text = "old";
    error.generateWhat(text);
    EXPECT_EQ(text, "new");
}

TEST(Exception, does_not_throw_from_what_when_its_text_cannot_be_made) {
    static_assert(noexcept(std::declval<const ko::Exception&>().what()));
    const MuteError error;
    EXPECT_STREQ(error.what(), "ko::Exception (its text could not be made)");
    EXPECT_STREQ(error.what(), "ko::Exception (its text could not be made)");
}

TEST(Exception, shows_its_message_though_its_cause_has_no_text) {
    const MuteError cause;
    const ko::Exception error("failed", &cause);
    EXPECT_STREQ(error.what(), "failed Cause: ko::Exception (its text could not be made)");
}

TEST(Exception, copies_are_independent) {
    const ko::Exception cause("cause");
    auto original = std::make_unique<NumberedError>(1, &cause);
    NumberedError copy(*original);
    copy.setNumber(2);
    EXPECT_STREQ(original->what(), "#1 base text Cause: cause");
    original.reset();
    EXPECT_STREQ(copy.what(), "#2 base text Cause: cause");
}

TEST(Exception, assignment_replaces_message_and_cause) {
    const ko::Exception cause("cause");
    auto source = std::make_unique<ko::Exception>("source", &cause);
    ko::Exception target("target");
    target = *source;
    source.reset();
    EXPECT_STREQ(target.what(), "source Cause: cause");
    target = ko::Exception("bare");
    EXPECT_STREQ(target.what(), "bare");
}

TEST(Exception, survives_assignment_to_itself) {
    const ko::Exception cause("cause");
    ko::Exception error("error", &cause);
    const ko::Exception& same = error;
    error = same;
    EXPECT_STREQ(error.what(), "error Cause: cause");
}

TEST(Exception, is_unchanged_by_a_failed_assignment) {
    ko::Exception target("target");
    const ko::Exception cause("cause");
    const ko::Exception with("with", &cause);
    target = with;

    class Late : public ko::Exception {
    public:
        Late(bool& fails) : ko::Exception("late"), m_fails(fails) {}
        Late* clone() const override {
            if (m_fails) {
                throw std::bad_alloc();
            }
            return new Late(*this);
        }

    private:
        bool& m_fails;
    };
    bool fails = false;
    const ko::Exception source("source", std::make_unique<Late>(fails).get());
    fails = true;  // NOLINT(clang-analyzer-deadcode.DeadStores): Late reads it by reference
    EXPECT_THROW(target = source, std::bad_alloc);
    EXPECT_STREQ(target.what(), "with Cause: cause");
}

TEST(Exception, is_not_made_when_its_cause_cannot_be_cloned) {
    const Unclonable cause;
    EXPECT_THROW(const ko::Exception error("failed", &cause), std::bad_alloc);
}

TEST(Exception, clone_is_of_the_most_derived_type) {
    const ko::Exception plain("plain");
    const NumberedError numbered(5);
    const ko::RuntimeError fault("fault");
    const auto cloneOf = [](const ko::Exception& error) {
        return std::unique_ptr<ko::Exception>(error.clone());
    };
    EXPECT_STREQ(cloneOf(plain)->what(), "plain");
    EXPECT_STREQ(cloneOf(numbered)->what(), "#5 base text");
    EXPECT_STREQ(cloneOf(fault)->what(), "fault");
    EXPECT_NE(dynamic_cast<NumberedError*>(cloneOf(numbered).get()), nullptr);
    EXPECT_NE(dynamic_cast<ko::RuntimeError*>(cloneOf(fault).get()), nullptr);
    EXPECT_EQ(dynamic_cast<ko::RuntimeError*>(cloneOf(plain).get()), nullptr);
}

TEST(Exception, clone_outlives_the_original) {
    const ko::Exception cause("cause");
    auto original = std::make_unique<ko::RuntimeError>("fault", &cause);
    const std::unique_ptr<ko::Exception> clone(original->clone());
    original.reset();
    EXPECT_STREQ(clone->what(), "fault Cause: cause");
}

TEST(RuntimeError, is_caught_as_any_of_its_bases) {
    EXPECT_THROW(throw ko::RuntimeError("fault"), ko::RuntimeError);
    EXPECT_THROW(throw ko::RuntimeError("fault"), ko::Exception);
    EXPECT_THROW(throw ko::RuntimeError("fault"), std::exception);
}

TEST(RuntimeError, copies_and_assigns_message_and_cause) {
    const ko::Exception cause("cause");
    const ko::RuntimeError fault("fault", &cause);
    const ko::RuntimeError copy(
        fault);  // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    ko::RuntimeError target("target");
    target = fault;
    EXPECT_STREQ(copy.what(), "fault Cause: cause");
    EXPECT_STREQ(target.what(), "fault Cause: cause");
}

}  // namespace
