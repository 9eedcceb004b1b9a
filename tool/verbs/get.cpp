// SPDX-License-Identifier: MIT
//
// orvid get: the values at paths.

#include <optional>

#include "call/Options.h"
#include "edit/Answer.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "input/MissingPath.h"
#include "input/PathSteps.h"
#include "input/ValueWord.h"
#include "input/withPath.h"
#include "output/shellWord.h"
#include "text/TextLookup.h"
#include "verbs/Schema.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

class Get : public DocumentVerb {
public:
    const char* name() const override { return "get"; }
    const char* help() const override { return "Write the value at a path"; }
    const char* examples() const override {
        return "  orvid get 'servers[0].host' settings.json\n"
               "  orvid get --raw name --also 'servers[-1].host' settings.json\n"
               "  orvid get --default timeout settings.json\n"
               "  orvid get --default=0 retries settings.json\n"
               "  orvid get --lines --raw -j 4 --on-error=skip user.name <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        words.required("PATH", m_word, "a path such as a.b[3].c, or a JSON Pointer such as /a/b");
        addFiles(words, call);
        words.repeated("--also", m_also, "PATH",
                       "a further path; with --lines the values of a record are an array then");
        words.optional(
            "--default", k_schemaDefault, m_default,
            "where the data has no value, write VALUE: JSON text, string:TEXT, file:FILE, "
            "text-file:FILE or env:NAME, after a = in the same word; without VALUE, write "
            "the default in meta.schema or in --schema");
        addSchema(words, call);
        addRaw(words, call);
        addLayout(words, call);
        addStrict(words, call);
        addLines(words, call);
    }

    void prepare(Call& call) override {
        requireNoFile("PATH", m_word, call.files);
        requireFile(call.files);
        m_schema.load(call);
        m_paths.emplace_back(m_word);
        for (const std::string& word : m_also) {
            m_paths.emplace_back(word);
        }
        if (!m_default.empty() && m_default != k_schemaDefault) {
            m_value.emplace();
            if (readsInput(m_default) && isInputAmong(call.files)) {
                throw UsageError("--default and FILE cannot both be standard input");
            }
            readValueWord(m_default, *m_value, call.isStrict, "--default=");
            for (const CallPath& path : m_paths) {
                path.requireLookup();
            }
        }
        prepareText(call);
    }

private:
    std::string hintForFile(const std::string& word) const override {
        return namesFile(m_word) ? "; the PATH stands before the file"
                                 : "; a further path is written --also " + shellWord(word);
    }

    static constexpr const char* k_schemaDefault = "schema";

    /// A path that is malformed is reported when it is followed.
    void prepareText(const Call& call) {
        m_isTextEnough = m_paths.size() == 1 || !call.lines.isOn;
        for (const CallPath& path : m_paths) {
            m_isTextEnough = m_isTextEnough && path.isPlain();
        }
        try {
            for (std::size_t i = 0; m_isTextEnough && i < m_paths.size(); ++i) {
                m_steps.push_back(stepsOf(m_paths[i].word()));
            }
        } catch (const Failure&) {
            m_isTextEnough = false;
        }
        for (const ValueSteps& steps : m_steps) {
            for (const ValueStep& step : steps) {
                m_isTextEnough =
                    m_isTextEnough && (step.isKey || step.index != ko::Orvid::k_noIndex);
            }
        }
    }

    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        if (call.isStrict || !m_isTextEnough || !isPlain(call.layout)) {
            return false;
        }
        for (const ValueSteps& steps : m_steps) {
            const std::optional<std::string_view> found =
                lookUp(document.text, steps, wholeOptions());
            if (!found || !appendAnswer(call, *found, out)) {
                return false;
            }
        }
        return true;
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        if (call.lines.isOn && m_paths.size() > 1) {
            appendAll(call, document, out);
            return;
        }
        for (const CallPath& path : m_paths) {
            appendAnswer(call, found(path, document), out);
        }
    }

    void appendAll(const Call& call, const Document& document, Bytes& out) const {
        Element values;
        Element::create(values.data(), ko::Orvid::etArray, &values);
        for (const CallPath& path : m_paths) {
            values.array().push_back(found(path, document));
        }
        appendAnswer(call, values, out);
    }

    const Element& found(const CallPath& path, const Document& document) const {
        try {
            return path.get(document.root);
        } catch (const PathNotFound& error) {
            if (m_default.empty()) {
                throw;
            }
            return m_value ? *m_value : schemaDefault(path, document, error);
        }
    }

    /// The schema's default for what `missing` says of the data.
    const Element& schemaDefault(const CallPath& path, const Document& document,
                                 const PathNotFound& missing) const {
        const Element& root = document.root;
        if (path.onlyPointer() != nullptr) {
            const Failure failure = missingPath(document.location, root, missing);
            throw Failure(failure.status(), failure.location(),
                          "pointer \"" + path.word() +
                              "\": there is no such place, and a schema's default is not looked "
                              "up by a pointer with an empty key; --default=VALUE gives a value");
        }
        try {
            return withPath(path.in(root), [&](const Path& parsed) {
                return std::cref(m_schema.of(root).getDefault(parsed));
            });
        } catch (const PathNotFound&) {
            const Failure failure = missingPath(document.location, root, missing);
            throw Failure(failure.status(), failure.location(),
                          failure.text() + whyNoDefault(root));
        }
    }

    std::string whyNoDefault(const Element& root) const {
        return m_schema.isFor(root)
                   ? "; the schema has no default for it: --default=VALUE gives one"
                   : "; there is no meta.schema, so no default: --schema FILE names a schema, and "
                     "--default=VALUE gives a value";
    }

    /// A value that follows `--default` as a word of its own is taken for the path, and the path
    /// for a file.
    void requireFile(const std::vector<std::string>& files) const {
        const bool isAlone = m_default == k_schemaDefault && !files.empty();
        if (!isAlone || files.front() == k_standardInput || isFileThere(files.front()) ||
            endsAsFile(files.front())) {
            return;
        }
        const bool isFirst = isJson(m_word);
        throw Failure(
            ExitStatus::inputOutput, {files.front(), 0, 0, {}},
            "there is no such file; --default takes its value after a =, as in --default=" +
                (isFirst                 ? m_word
                 : isJson(files.front()) ? files.front()
                                         : "VALUE"));
    }

    static bool isJson(const std::string& word) {
        try {
            Element value;
            readArgument("JSON", word, value);
            return true;
        } catch (const Failure&) {
            return false;
        }
    }

    std::string m_word;
    std::vector<std::string> m_also;
    std::vector<CallPath> m_paths;
    std::string m_default;           ///< empty where none is asked for
    std::optional<Element> m_value;  ///< for what is not there
    Schema m_schema;
    std::vector<ValueSteps> m_steps;
    bool m_isTextEnough = true;
};

}  // namespace

std::unique_ptr<Verb> makeGet() { return std::make_unique<Get>(); }

}  // namespace orvid_tool
