// SPDX-License-Identifier: MIT
//
// NotingBuilder: a TreeBuilder that also notes where in the text each value stands.

#pragma once

#include <string_view>
#include <vector>

#include "document/TreeBuilder.h"
#include "source/SpanTable.h"

namespace ko::Orvid {

class NotingBuilder : public TokenSink {
public:
    /// `first` is the offset at which the document begins in the text that the spans are in.
    NotingBuilder(TreeBuilder& builder, std::uint64_t first) noexcept
        : m_builder(builder), m_first(first) {}

    void null(TokenSpan span) { add(span).setElement(&m_builder.null(span)); }
    void boolean(bool value, TokenSpan span) {
        add(span).setElement(&m_builder.boolean(value, span));
    }
    [[gnu::always_inline]] void number(std::string_view text, TokenSpan span) {
        add(span).setElement(&m_builder.number(text, span));
    }
    void string(std::string_view text, TokenSpan span) {
        add(span).setElement(&m_builder.string(text, span));
    }
    bool key(std::string_view text, TokenSpan span) { return m_builder.key(text, span); }
    void openObject(TokenSpan span) { open(span).setElement(&m_builder.openObject(span)); }
    void closeObject(TokenSpan span) {
        m_builder.closeObject(span);
        close(span);
    }
    void openArray(TokenSpan span) { open(span).setElement(&m_builder.openArray(span)); }
    void closeArray(TokenSpan span) {
        m_builder.closeArray(span);
        close(span);
    }

    SpanTable& spans() noexcept { return m_spans; }

private:
    /// The row comes before the element, so that the span need not be kept while that is built.
    ValueSpan& add(TokenSpan span) { return m_spans.add(m_first + span.begin, m_first + span.end); }
    ValueSpan& open(TokenSpan span) {
        m_open.push_back(m_spans.size());
        return add(span);
    }
    void close(TokenSpan span) noexcept {
        m_spans.close(m_open.back(), m_first + span.end);
        m_open.pop_back();
    }

    TreeBuilder& m_builder;
    const std::uint64_t m_first;
    SpanTable m_spans;
    std::vector<std::uint32_t> m_open;  ///< the containers whose end has not come
};

}  // namespace ko::Orvid
