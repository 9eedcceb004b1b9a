// SPDX-License-Identifier: MIT
//
// Visits, what is left of the time that an evaluation may take, counted in looks at elements.

#pragma once

#include <cstddef>

namespace ko::Orvid {

class Visits {
public:
    explicit Visits(unsigned long long most) noexcept : m_most(most), m_left(most) {}

    /// Throws Exception, which names the bound, when fewer are left.
    void take(unsigned long long count) {
        if (count > m_left) {
            throwNoneLeft();
        }
        m_left -= count;
    }
    /// For a text that is compared or counted.
    void takeText(std::size_t bytes) { take(bytes / k_textOfOne); }
    /// For a text that a regular expression is run on, and for the size of that.
    void takeSearched(std::size_t bytes) { take(bytes / k_searchedOfOne); }
    void takeSize(unsigned long long bytes, std::size_t size) {
        take(bytes * size / k_searchedSizeOfOne);
    }
    /// For the text of a regular expression, and for what it is compiled to.
    void takePattern(std::size_t bytes) { take(bytes * k_ofPatternByte); }
    void takeCompiled(std::size_t size) { take(size * k_ofInstruction); }

    /// For those who count for themselves.
    unsigned long long& left() noexcept { return m_left; }
    [[noreturn]] void throwNoneLeft() const;

private:
    // About as many bytes as take as long as one look.
    static constexpr std::size_t k_textOfOne = 64;
    static constexpr std::size_t k_searchedOfOne = 8;
    // Between what an automaton takes, which is far less, and what RE2 takes without one.
    static constexpr std::size_t k_searchedSizeOfOne = 32;
    static constexpr std::size_t k_ofPatternByte = 32;
    static constexpr std::size_t k_ofInstruction = 128;

    unsigned long long m_most;
    unsigned long long m_left;
};

}  // namespace ko::Orvid
