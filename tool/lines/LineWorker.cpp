// SPDX-License-Identifier: MIT
//
// A batch line by line. One tree serves all lines of a batch.

#include "lines/LineWorker.h"

#include <new>
#include <string>

#include "text/byteOrderMark.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

/// A mark belongs at the beginning of an input. The verbs that edit read texts of their own, before
/// which one may stand: they are not to keep it in the middle of a file.
void refuseMark(const Document& document) {
    ko::Orvid::Element none;
    readTree(document.location, document.text, none);
}

/// A first line that ends too early is mostly that of a document of several lines.
Failure withLinesHint(const Failure& failure) {
    if (failure.code() != ko::Orvid::ParseErrorCode::textTruncated) {
        return failure;
    }
    return {failure.status(), failure.location(),
            std::string(failure.text()) +
                "; with --lines every line is a document: for documents of several lines write "
                "split --values before it",
            failure.excerpt()};
}

}  // namespace

void LineWorker::work(LineBatch& batch) const {
    std::string_view text = batch.text.view();
    const std::string_view mark =
        text.substr(0, batch.isFirst ? ko::Orvid::text::markLength(text) : 0);
    text.remove_prefix(mark.length());
    const std::string_view kept = m_keepsMark ? mark : std::string_view();
    batch.out.append(kept);
    if (batch.kind == LineBatch::whole) {
        workOnLines(text, batch);
    } else if (batch.kind == LineBatch::head) {
        workOnHead(text, batch);
    } else {
        workOnPart(batch);
    }
    if (batch.isStopped && batch.out.length() == kept.length()) {
        batch.out.cut(0);
    }
}

void LineWorker::workOnLines(std::string_view rest, LineBatch& batch) const {
    Document document;
    document.location.file = m_name;
    while (!rest.empty() && !batch.isStopped) {
        const std::size_t end = rest.find('\n');
        ++batch.counts.lines;
        document.location.line = batch.counts.lines;
        const std::size_t start = batch.out.length();
        workOnLine(rest.substr(0, end), document, batch);
        rest.remove_prefix(end + 1);
        const bool isWritten = batch.out.length() > start;
        if (isWritten && rest.empty() && batch.isOpen) {
            batch.out.cut(batch.out.length() - 1);
        }
    }
}

void LineWorker::workOnLine(std::string_view line, Document& document, LineBatch& batch) const {
    document.text = line;
    if (ko::Orvid::text::isBlankLine(document.text)) {
        ++batch.counts.blank;
        return;
    }
    const std::size_t start = batch.out.length();
    try {
        if (line.length() > m_call.lines.longest) {
            throw tooLong();
        }
        if (ko::Orvid::text::markLength(document.text) > 0) {
            refuseMark(document);
        }
        m_verb.work(m_call, document, batch.out);
    } catch (const Failure& failure) {
        batch.out.cut(start);
        const bool isFirst = batch.isFirst && batch.counts.lines == 1;
        fail(isFirst ? withLinesHint(failure) : failure, line, batch);
    } catch (const std::bad_alloc&) {
        // The line is not to blame, and those that follow may fail the same way.
        batch.out.cut(start);
        fail(memoryFailure(document.location), line, batch);
        batch.isStopped = true;
    }
}

void LineWorker::workOnHead(std::string_view line, LineBatch& batch) const {
    ++batch.counts.lines;
    Failure failure = tooLong();
    failure.setLine(1);
    fail(failure, line, batch);
    // The line goes on in the batches that follow.
    if (m_call.lines.onError == OnError::passthrough) {
        batch.out.cut(batch.out.length() - 1);
    }
    if (m_call.lines.rejects) {
        batch.rejects.cut(batch.rejects.length() - 1);
    }
}

void LineWorker::workOnPart(LineBatch& batch) const {
    if (m_call.lines.onError == OnError::passthrough) {
        batch.out.append(batch.text.view());
        batch.out.cut(batch.out.length() - (batch.isOpen ? 1 : 0));
    }
    if (m_call.lines.rejects) {
        batch.rejects.append(batch.text.view());
    }
}

void LineWorker::fail(const Failure& failure, std::string_view line, LineBatch& batch) const {
    ++batch.counts.failed;
    batch.failures.push_back(failure);
    batch.failures.back().setLine(batch.counts.lines);
    const OnError onError = m_call.lines.onError;
    if (m_call.lines.rejects) {
        batch.rejects.append(line);
        batch.rejects.append("\n");
    }
    if (onError == OnError::stop || failure.status() == ExitStatus::usage) {
        batch.isStopped = true;
    } else if (onError == OnError::passthrough) {
        batch.out.append(line);
        batch.out.append("\n");
    } else if (onError == OnError::null) {
        batch.out.append("null\n");
    }
}

Failure LineWorker::tooLong() const {
    return {ExitStatus::failed, Location{m_name, 0, 0, {}},
            "the line is longer than " + std::to_string(m_call.lines.longest) + " bytes"};
}

}  // namespace orvid_tool
