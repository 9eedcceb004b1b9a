// SPDX-License-Identifier: MIT
//
// ReadOptions says what a DomParser accepts and what it refuses. docs/reading-and-writing.md says
// more of each.

#pragma once

#include <cstddef>
#include <cstdint>

namespace ko::Orvid {

/// What happens to a key that its object has already.
enum class RepeatedKeys {
    replace,  ///< the key keeps its first place and its last value
    reject,   ///< it is an error; the first value stays
};

/// How text is read. The defaults are the lenient reading, strict() is the preset for documents in
/// which nothing may be lost. As soon as one field differs from its default, every error of the
/// text, those of syntax included, is reported with its line and columns. Making one is O(1).
struct ReadOptions {
    /// The text must hold one complete value, with nothing but whitespace and comments around it. A
    /// number at the end of the text is complete. Otherwise text that ends early is no error, and
    /// what stands after the value is not looked at.
    bool requireWholeDocument = false;
    /// Strings, keys and comments must be UTF-8.
    bool validateUtf8 = false;
    /// A `\u` escape of half a surrogate pair is an error when the other half does not stand beside
    /// it. Otherwise it is read as other characters, which docs/reading-and-writing.md lists.
    bool rejectLoneSurrogates = false;
    /// Whether `/* */` and `//` comments are whitespace, or errors.
    bool allowComments = true;
    /// Whether a comma may stand after the last item or member; otherwise it is an error.
    bool allowTrailingCommas = false;
    /// Whether vertical tab and form feed are whitespace, or errors.
    bool allowOtherWhitespace = true;
    RepeatedKeys repeatedKeys = RepeatedKeys::replace;
    /// How many arrays and objects may be open at once; 0 is no limit.
    std::size_t maxDepth = 0;
    /// How many bytes the whole text may have; 0 is no limit.
    std::uint64_t maxLength = 0;
    /// How many bytes a line may have, its newline not counted; 0 is no limit.
    std::uint64_t maxLineLength = 0;

    /// RFC 8259 with unique keys: whole documents of valid UTF-8, without comments, trailing
    /// commas, lone surrogates, other whitespace and repeated keys. There is no limit.
    static ReadOptions strict() noexcept {
        ReadOptions options;
        options.requireWholeDocument = true;
        options.validateUtf8 = true;
        options.rejectLoneSurrogates = true;
        options.allowComments = false;
        options.allowOtherWhitespace = false;
        options.repeatedKeys = RepeatedKeys::reject;
        return options;
    }

    /// strict(), but comments and trailing commas are allowed: JSON as people write it.
    static ReadOptions jsonc() noexcept {
        ReadOptions options = strict();
        options.allowComments = true;
        options.allowTrailingCommas = true;
        return options;
    }
};

}  // namespace ko::Orvid
