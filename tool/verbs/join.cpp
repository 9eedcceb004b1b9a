// SPDX-License-Identifier: MIT
//
// orvid join: an array of all values.

#include "call/Options.h"
#include "edit/rewrite.h"
#include "input/Document.h"
#include "input/ValueStream.h"
#include "output/Output.h"
#include "output/Report.h"
#include "verbs/RecordArray.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// The array as it is written, which is closed when all went well.
class OpenArray {
public:
    OpenArray(Output& out, const Layout& layout) : m_out(out), m_layout(layout) {}

    void add(ValueStream& value, bool isStrict) {
        Bytes text;
        if (isStrict || !isPlain(m_layout) ||
            !rewrite(value.text(), {m_layout.options.indent, false}, nullptr, wholeOptions(),
                     text)) {
            text.cut(0);
            value.read(m_value);
            text.append(jsonText(m_value, m_layout));
        }
        m_out.write(m_isEmpty ? "[" : ",");
        m_isEmpty = false;
        writeIndented(text.view().substr(0, text.length() - 1));
    }

    void close() {
        const bool hasLines = !m_isEmpty && !m_layout.options.indent.empty();
        m_out.write(m_isEmpty ? "[" : "");
        m_out.write(hasLines ? "\n]\n" : "]\n");
    }

    /// Ends the line of an array that stays open after an error.
    void leaveOpen() { m_out.write(m_isEmpty ? "" : "\n"); }

private:
    /// One level deeper. A newline in JSON text always belongs to the layout.
    void writeIndented(std::string_view text) {
        const std::string& indent = m_layout.options.indent;
        if (indent.empty()) {
            m_out.write(text);
            return;
        }
        std::size_t end = 0;
        do {
            end = text.find('\n');
            m_out.write("\n" + indent);
            m_out.write(text.substr(0, end));
            text.remove_prefix(end == std::string_view::npos ? text.length() : end + 1);
        } while (end != std::string_view::npos);
    }

    Output& m_out;
    const Layout& m_layout;
    Element m_value;
    bool m_isEmpty = true;
};

class Join : public Verb {
public:
    const char* name() const override { return "join"; }
    const char* help() const override {
        return "Write one array of all values: records, or any that follow each other";
    }
    const char* examples() const override {
        return "  orvid join <records.jsonl\n"
               "  orvid join --compact first.json second.json\n"
               "  orvid join --lines -j 4 --on-error=skip <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        addLayout(words, call);
        addStrict(words, call);
        addLines(words, call, "treat every line as a document, an item each");
    }

    /// The layout is that of the array: its records stand on a line each.
    void prepare(Call& call) override {
        m_indent = call.layout.options.indent;
        call.layout.isIndentAsked = call.layout.isIndentAsked && !call.lines.isOn;
    }

    ExitStatus run(const Call& call, const Report& report, Output& out) const override {
        return call.lines.isOn ? runRecords(call, report, out) : runValues(call, out);
    }

private:
    /// The array stays open where a record ended the run.
    ExitStatus runRecords(const Call& call, const Report& report, Output& out) const {
        RecordArray array(out, m_indent);
        const ExitStatus status = makePrint()->run(call, report, array);
        if (status == ExitStatus::done ||
            (status == ExitStatus::failed && call.lines.onError != OnError::stop)) {
            array.close();
        } else {
            array.leaveOpen();
        }
        return status;
    }

    static ExitStatus runValues(const Call& call, Output& out) {
        OpenArray all(out, call.layout);
        try {
            for (const std::string& file : call.files) {
                addValues(call, file, all);
            }
        } catch (const OutputFailure&) {
            throw;
        } catch (const Failure&) {
            all.leaveOpen();
            throw;
        }
        all.close();
        return ExitStatus::done;
    }

    static void addValues(const Call& call, const std::string& file, OpenArray& all) {
        Input input(file);
        ValueStream values(input, {}, {call.isStrict, false});
        try {
            while (values.next()) {
                all.add(values, call.isStrict);
            }
        } catch (const Unwritable& error) {
            throw values.failure(error.what());
        }
    }

    std::string m_indent;
};

}  // namespace

std::unique_ptr<Verb> makeJoin() { return std::make_unique<Join>(); }

}  // namespace orvid_tool
