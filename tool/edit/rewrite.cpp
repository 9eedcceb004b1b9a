// SPDX-License-Identifier: MIT
//
// The library's rewriter, kept for the next line.

#include "edit/rewrite.h"

#include <optional>

namespace orvid_tool {

namespace {

using ko::Orvid::text::TextRewriter;

class KeptRewriter {
public:
    TextRewriter& with(const STextLayout& layout) {
        const bool isSame = m_rewriter && m_layout.indent == layout.indent &&
                            m_layout.stopsAtMeta == layout.stopsAtMeta;
        if (!isSame) {
            ko::Orvid::text::Layout whole;
            whole.isIndented = !layout.indent.empty();
            whole.indent = layout.indent;
            whole.closesEmpty = true;
            m_rewriter.emplace(whole, layout.stopsAtMeta);
            m_layout = layout;
        }
        return *m_rewriter;
    }

private:
    std::optional<TextRewriter> m_rewriter;
    STextLayout m_layout;
};

}  // namespace

bool rewrite(std::string_view text, const STextLayout& layout,
             const ko::Orvid::text::TextEdit* edit, const ko::Orvid::ReadOptions& options,
             Bytes& out) {
    static thread_local KeptRewriter kept;  // one serves a million lines
    TextRewriter& rewriter = kept.with(layout);
    const bool isRewritten = rewriter.rewrite(text, edit, options);
    if (isRewritten) {
        out.append(rewriter.text());
    }
    return isRewritten;
}

}  // namespace orvid_tool
