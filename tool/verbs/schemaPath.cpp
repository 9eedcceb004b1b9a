// SPDX-License-Identifier: MIT
//
// orvid schema-path and orvid data-path: from a path in the data to the path in the schema that
// describes it, and back. Neither reads a document.

#include "input/PathWords.h"
#include "output/Output.h"
#include "output/placeWord.h"
#include "output/shellWord.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Path;

/// Which steps of a pointer are items, only a document says.
void refusePointer(const std::string& word) {
    if (word.rfind('/', 0) != 0) {
        return;
    }
    std::string hint;
    try {
        hint = "; write " + shellWord(pathWord(ko::Orvid::JsonPointer(word).toPath().str()));
    } catch (const ko::Exception&) {
        // It is malformed, or has an empty key.
    }
    throw UsageError("a path is expected here, not a JSON Pointer" + hint);
}

class SchemaPath : public Verb {
public:
    const char* name() const override { return "schema-path"; }
    const char* help() const override { return "Write the schema path of a data path"; }
    const char* examples() const override { return "  orvid schema-path 'servers[7].port'"; }

    void addWords(Words& words, Call& /*call*/) override {
        words.required("PATH", m_path, "a path such as a.b[3].c");
    }

    void prepare(Call& /*call*/) override { refusePointer(m_path); }

    ExitStatus run(const Call& /*call*/, const Report& /*report*/, Output& out) const override {
        out.write(withPath(m_path, &Path::toSchemaPath).str() + "\n");
        return ExitStatus::done;
    }

private:
    std::string m_path;
};

class DataPath : public Verb {
public:
    const char* name() const override { return "data-path"; }
    const char* help() const override { return "Write the data path of a schema path"; }
    const char* examples() const override {
        return "  orvid data-path meta.schema.properties.servers.items.properties.port";
    }

    void addWords(Words& words, Call& /*call*/) override {
        words.required("SCHEMAPATH", m_path, "a path below meta.schema");
    }

    void prepare(Call& /*call*/) override { refusePointer(m_path); }

    ExitStatus run(const Call& /*call*/, const Report& /*report*/, Output& out) const override {
        out.write(withPath(m_path, &Path::fromSchemaPath).str() + "\n");
        return ExitStatus::done;
    }

private:
    std::string m_path;
};

}  // namespace

std::unique_ptr<Verb> makeSchemaPath() { return std::make_unique<SchemaPath>(); }

std::unique_ptr<Verb> makeDataPath() { return std::make_unique<DataPath>(); }

}  // namespace orvid_tool
