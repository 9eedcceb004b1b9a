// SPDX-License-Identifier: MIT
//
// The library's rewriter, kept for the next line.

#include "edit/rewrite.h"

#include <optional>
#include <string>

namespace orvid_tool {

namespace {

using ko::Orvid::text::TextRewriter;

class KeptRewriter {
public:
    TextRewriter& with(const TextLayout& layout) {
        const bool isSame =
            m_rewriter && m_stopsAtMeta == layout.stopsAtMeta && layout.indent == m_indent;
        if (!isSame) {
            ko::Orvid::text::Layout whole;
            whole.isIndented = !layout.indent.empty();
            whole.indent = m_indent = layout.indent;
            whole.closesEmpty = true;
            m_rewriter.emplace(whole, layout.stopsAtMeta);
            m_stopsAtMeta = layout.stopsAtMeta;
        }
        return *m_rewriter;
    }

private:
    std::optional<TextRewriter> m_rewriter;
    std::string m_indent;
    bool m_stopsAtMeta = false;
};

}  // namespace

bool rewrite(std::string_view text, const TextLayout& layout, const ko::Orvid::text::TextEdit* edit,
             const ko::Orvid::ReadOptions& options, Bytes& out) {
    static thread_local KeptRewriter kept;  // one serves a million lines
    return kept.with(layout).rewrite(text, edit, options, out);
}

}  // namespace orvid_tool
