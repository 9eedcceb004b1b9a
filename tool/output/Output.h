// SPDX-License-Identifier: MIT
//
// Output, where the text that the verbs make goes: standard output, or the file that is edited in
// place.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvid_tool {

class Output {
public:
    virtual ~Output();
    /// Throws Failure when the text cannot be written.
    virtual void write(std::string_view text) = 0;
    /// What was held back goes out. Throws Failure as write() does.
    virtual void flush() = 0;
};

/// What is to be written to standard error before a line: a newline where it goes to the same place
/// as standard output, which was left within a line. The line counts as ended then.
std::string endOfOpenLine();

/// Standard output. Small texts are gathered until there are many of them or input is waited for.
class StandardOutput : public Output {
public:
    void write(std::string_view text) override;
    void flush() override;
    /// Closes it, which may report an error that writing did not. Nothing may follow.
    void close();

private:
    std::string m_held;
};

}  // namespace orvid_tool
