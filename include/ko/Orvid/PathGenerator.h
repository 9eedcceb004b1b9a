// SPDX-License-Identifier: MIT
//
// PathGenerator writes path text step by step. PathParser reads it back to the same steps, except
// for empty keys, which the path language cannot express, and a byte 0xFF, which ends a path.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/types.h>
#include <ko/StringRef.h>

#include <iosfwd>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// Writes path text to a stream that it does not own, which reports its own failures. An operation
/// that states no cost is O(1).
class KO_API PathGenerator {
public:
    /// The characters of a key that are written after a backslash.
    static constexpr std::string_view k_special = ".[]*\\";

    /// Writes nothing yet. `out` must outlive the generator's use.
    explicit PathGenerator(std::ostream& out);

    ///@{
    /// Writes an object step: a dot unless it is the first step, then the key, escaped. Linear in
    /// the length of the key.
    void genObjectProperty(const StringRef<char>& key);
    void genObjectProperty(const std::string& key);
    ///@}

    /// Writes an array step: `[index]` with the 0-based index, or `[*]` for k_noIndex. Constant
    /// cost.
    void genListItem(unsigned int index);

    /// @name Compatibility
    /// What new programs need not use: the states, which no function reports.
    ///@{
    enum EState : int {
        esInit,    ///< nothing written yet
        esObject,  ///< the last step was an object step
        esArray,   ///< the last step was an array step
        esError,   ///< never entered
    };
    ///@}

private:
    std::ostream* m_out;
    EState m_state;
};

}  // namespace ko::Orvid

///@{
/// Prints the state's name; sets failbit, writing nothing, for a value that is no state. Constant
/// cost.
KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::PathGenerator::EState state);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::PathGenerator::EState state);
///@}

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
