// SPDX-License-Identifier: MIT
//
// RecordingListener writes each event of a CallbackParser as a word, so that a test compares all
// events of a document with one text. It can also stop the parser, throw, and swallow errors.

#pragma once

#include <ko/Orvid/CallbackParser.h>

#include <cstddef>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvid_test {

/// What the listener does at its special event.
enum class Reaction { goOn, stop, fail };

/// `[1,"a"]` gives "[ n1 sa ] ": one word for each event, with a space after it. The words are
/// null, true, false, n and the digits, s and the string, k and the key, { } [ ]; with numbers by
/// value i and the long, d and the double.
class RecordingListener : public ko::Orvid::CallbackParserListener {
public:
    std::string words;
    std::vector<std::string> errors;  ///< the texts that cb_error() was given
    int errorAnswer = 0;              ///< what cb_error() returns
    int goOn = 1;                     ///< what an event returns that is not stopped
    bool numbersAsText = true;
    int timesAsked = 0;  ///< how often use_number_callback() was called
    std::size_t special =
        std::numeric_limits<std::size_t>::max();  ///< the 0-based event of `reaction`
    Reaction reaction = Reaction::goOn;

    int cb_null() override { return note("null"); }
    int cb_boolean(bool value) override { return note(value ? "true" : "false"); }
    int cb_number(const char* text, unsigned int length) override {
        return note("n" + std::string(text, length));
    }
    int cb_string(const char* text, unsigned int length) override {
        return note("s" + std::string(text, length));
    }
    int cb_start_map() override { return note("{"); }
    int cb_map_key(const char* text, unsigned int length) override {
        return note("k" + std::string(text, length));
    }
    int cb_end_map() override { return note("}"); }
    int cb_start_array() override { return note("["); }
    int cb_end_array() override { return note("]"); }
    int cb_error(const char* message) override {
        errors.emplace_back(message);
        return errorAnswer;
    }
    int cb_integer(long value) override { return note("i" + std::to_string(value)); }
    int cb_double(double value) override {
        std::ostringstream text;
        text << "d" << value;
        return note(text.str());
    }
    bool use_number_callback() override {
        ++timesAsked;
        return numbersAsText;
    }

private:
    int note(const std::string& word) {
        words += word + ' ';
        if (m_count++ != special) {
            return goOn;
        }
        if (reaction == Reaction::fail) {
            throw std::runtime_error(word);
        }
        return reaction == Reaction::stop ? 0 : goOn;
    }

    std::size_t m_count = 0;
};

}  // namespace orvid_test
