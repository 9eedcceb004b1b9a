// SPDX-License-Identifier: MIT
//
// Sinks of the scanner that write what it reads. A member or an item that the edit wants and that
// is missing is written where its container ends.

#include "text/TextRewriter.h"

#include <algorithm>

#include "text/scanWhole.h"
#include "text/StepFollower.h"

namespace ko::Orvid::text {

namespace {

/// Writes every token.
class TokenWriter : public TokenSink {
public:
    explicit TokenWriter(Writer& writer) : m_writer(writer) {}

    void null(TokenSpan /*span*/) { m_writer.null(); }
    void boolean(bool value, TokenSpan /*span*/) { m_writer.boolean(value); }
    void number(std::string_view text, TokenSpan /*span*/) {
        m_writer.number(text.data(), text.size());
    }
    void string(std::string_view text, TokenSpan span) {
        // Every escape is longer than what it stands for.
        constexpr std::uint64_t k_quotes = 2;
        if (span.end - span.begin == text.size() + k_quotes) {
            m_writer.plainString(text.data(), text.size());
        } else {
            m_writer.string(text.data(), text.size());
        }
    }
    bool key(std::string_view text, TokenSpan span) {
        string(text, span);
        return true;
    }
    void openObject(TokenSpan /*span*/) { m_writer.openMap(); }
    void closeObject(TokenSpan /*span*/) { m_writer.closeMap(); }
    void openArray(TokenSpan /*span*/) { m_writer.openArray(); }
    void closeArray(TokenSpan /*span*/) { m_writer.closeArray(); }

private:
    Writer& m_writer;
};

/// Writes every token, if no object repeats a key.
class Copier : public TokenWriter {
public:
    Copier(Writer& writer, KeyHashes& keys) : TokenWriter(writer), m_keys(keys) {}

    bool key(std::string_view text, TokenSpan span) {
        return addKey(text) && TokenWriter::key(text, span);
    }
    void openObject(TokenSpan span) {
        openKeys();
        TokenWriter::openObject(span);
    }
    void closeObject(TokenSpan span) {
        closeKeys();
        TokenWriter::closeObject(span);
    }

    bool areKeysDifferent() const noexcept { return m_areDifferent; }

protected:
    bool addKey(std::string_view text) { return m_keys.add(text); }
    void openKeys() { m_keys.open(); }
    void closeKeys() { m_areDifferent = m_keys.close() && m_areDifferent; }

private:
    KeyHashes& m_keys;
    bool m_areDifferent = true;
};

/// The same, but stops at a member `meta` of the root.
class MetaWatcher : public Copier {
public:
    using Copier::Copier;

    bool key(std::string_view text, TokenSpan span) {
        return !(m_depth == 1 && text == "meta") && Copier::key(text, span);
    }
    void openObject(TokenSpan span) {
        ++m_depth;
        Copier::openObject(span);
    }
    void closeObject(TokenSpan span) {
        --m_depth;
        Copier::closeObject(span);
    }
    void openArray(TokenSpan span) {
        ++m_depth;
        Copier::openArray(span);
    }
    void closeArray(TokenSpan span) {
        --m_depth;
        Copier::closeArray(span);
    }

private:
    std::size_t m_depth = 0;
};

/// Writes all but some values, which it skips, except that their keys count as well.
class Editor : public Copier {
public:
    Editor(Writer& writer, KeyHashes& keys, const TextEdit& edit)
        : Copier(writer, keys), m_writer(writer), m_edit(edit), m_follower(edit.steps) {}

    void null(TokenSpan span) {
        if (takes()) {
            Copier::null(span);
        }
    }
    void boolean(bool value, TokenSpan span) {
        if (takes()) {
            Copier::boolean(value, span);
        }
    }
    void number(std::string_view text, TokenSpan span) {
        if (takes()) {
            Copier::number(text, span);
        }
    }
    void string(std::string_view text, TokenSpan span) {
        if (takes()) {
            Copier::string(text, span);
        }
    }
    bool key(std::string_view text, TokenSpan span) {
        if (m_skipped > 0) {
            return addKey(text);
        }
        m_follower.key(text);
        return Copier::key(text, span);
    }
    void openObject(TokenSpan span) {
        if (opens(false)) {
            Copier::openObject(span);
        } else {
            openKeys();
        }
    }
    void closeObject(TokenSpan span) {
        if (closes()) {
            Copier::closeObject(span);
        } else {
            closeKeys();
        }
    }
    void openArray(TokenSpan span) {
        if (opens(true)) {
            Copier::openArray(span);
        }
    }
    void closeArray(TokenSpan span) {
        if (closes()) {
            Copier::closeArray(span);
        }
    }

    bool isMade() const noexcept { return m_isMade && !m_isImpossible; }

private:
    /// Whether the scalar that comes is to be written.
    bool takes() { return m_skipped == 0 && !(m_follower.begin() && replaces()); }
    bool opens(bool isArray) {
        if (m_skipped > 0) {
            ++m_skipped;
            return false;
        }
        const bool isOnWay = m_follower.begin();
        if (isOnWay && replaces()) {
            m_skipped = 1;
            return false;
        }
        m_follower.open(isArray, isOnWay);
        return true;
    }
    bool closes() {
        if (m_skipped > 0) {
            --m_skipped;
            return false;
        }
        if (m_follower.missing() != nullptr) {
            make(m_follower.depth() - 1);
        }
        m_follower.close();
        return true;
    }

    bool replaces() {
        if (!m_follower.isTarget()) {
            return false;
        }
        putValue();
        return true;
    }

    /// Writes the child that the step wants, with all that is to be in it. Only members can be made
    /// below it.
    void make(std::size_t step) {
        const ValueSteps& steps = m_edit.steps;
        const std::size_t first = step;
        for (; step < steps.size(); ++step) {
            if (step > first) {
                m_isImpossible = m_isImpossible || !steps[step].isKey;
                m_writer.openMap();
            }
            if (steps[step].isKey) {
                m_writer.string(steps[step].key.data(), steps[step].key.size());
            }
        }
        putValue();
        for (std::size_t i = first + 1; i < steps.size(); ++i) {
            m_writer.closeMap();
        }
    }

    void putValue() {
        TokenWriter value(m_writer);
        m_isImpossible = !scanWhole(m_edit.value, ReadOptions::strict(), value) || m_isImpossible;
        m_isMade = true;
    }

    Writer& m_writer;
    const TextEdit& m_edit;
    StepFollower m_follower;
    std::size_t m_skipped = 0;  ///< how many containers are open in what the value replaces
    bool m_isMade = false;
    bool m_isImpossible = false;
};

/// Lets the writer write a new document at the end of bytes.
class WriterAt {
public:
    WriterAt(Writer& writer, Bytes& out) : m_writer(writer), m_out(out) {
        m_writer.restart();
        m_writer.swapText(m_out);
    }
    WriterAt(const WriterAt&) = delete;
    WriterAt& operator=(const WriterAt&) = delete;
    ~WriterAt() { m_writer.swapText(m_out); }

private:
    Writer& m_writer;
    Bytes& m_out;
};

}  // namespace

bool TextRewriter::rewrite(std::string_view text, const TextEdit* edit, ReadOptions options,
                           Bytes& out) {
    // The indents of deep levels are much longer than the text, which may be malformed.
    constexpr std::size_t k_deepest = 100;
    options.maxDepth = options.maxDepth == 0 ? k_deepest : std::min(options.maxDepth, k_deepest);
    const std::size_t start = out.length();
    const bool isWritten = write(text, edit, options, out);
    if (!isWritten) {
        out.cut(start);
    }
    return isWritten;
}

bool TextRewriter::write(std::string_view text, const TextEdit* edit, const ReadOptions& options,
                         Bytes& out) {
    const WriterAt writer(m_writer, out);
    m_keys.clear();
    const auto copies = [&](auto&& copier) {
        return scanWhole(text, options, copier) && copier.areKeysDifferent();
    };
    if (edit == nullptr) {
        return m_stopsAtMeta ? copies(MetaWatcher(m_writer, m_keys))
                             : copies(Copier(m_writer, m_keys));
    }
    Editor editor(m_writer, m_keys, *edit);
    return copies(editor) && editor.isMade();
}

}  // namespace ko::Orvid::text
