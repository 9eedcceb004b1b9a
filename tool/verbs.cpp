// SPDX-License-Identifier: MIT
//
// What each verb does with a document.

#include "verbs.h"

#include <ko/Orvid.h>

#include <iterator>
#include <memory>
#include <string>

#include "Document.h"
#include "Failure.h"
#include "Output.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

/// The words of one call.
struct SWords {
    std::string path;
    std::string json;
    std::string file = k_standardInput;
    bool useDefault = false;
    bool writeMeta = false;
};

/// Does something with the path given and turns the library's errors into the command's.
template<class Action>
auto withPath(const std::string& name, const std::string& path, const Action& action) {
    try {
        return action(Path(path));
    } catch (const PathNotFound& error) {
        throw missingPath(name, error);
    } catch (const ParseException& error) {
        throw malformedPath(path, error);
    }
}

const Element& getUsingDefault(const Element& root, const Path& path) {
    const Element* const found = Path::tryGetElement(path, root);
    return found != nullptr ? *found : root.getDefault(path);
}

void removeElement(Element& element, const std::string& name) {
    Element* const parent = element.parent();
    if (parent == nullptr) {
        throw Failure(ExitStatus::failed, name + ": the root cannot be removed");
    }
    if (parent->isObject()) {
        parent->object().erase(element.key());
    } else {
        auto& items = parent->array();
        items.erase(std::next(items.begin(), static_cast<std::ptrdiff_t>(element.index())));
    }
}

void print(const SWords& words) {
    Document document(words.file);
    Dom dom;
    dom.setRoot(document.root, false);
    dom.setWriteMeta(words.writeMeta);
    writeOut(jsonText(document.name, dom));
}

void get(const SWords& words) {
    const Document document(words.file);
    const Element& found = withPath(
        document.name, words.path, [&](const Path& path) -> std::reference_wrapper<const Element> {
            return words.useDefault ? getUsingDefault(document.root, path)
                                    : document.root.get(path);
        });
    writeOut(jsonText(document.name, found));
}

void set(const SWords& words) {
    Element value;
    try {
        readText("JSON", words.json, value);
    } catch (const Failure& failure) {
        throw Failure(ExitStatus::usage, failure.what());
    }
    Document document(words.file);
    withPath(document.name, words.path,
             [&](const Path& path) { document.root.create(path, value); });
    writeOut(jsonText(document.name, document.root));
}

void remove(const SWords& words) {
    Document document(words.file);
    withPath(document.name, words.path,
             [&](const Path& path) { removeElement(document.root.get(path), document.name); });
    writeOut(jsonText(document.name, document.root));
}

void paths(const SWords& words) { writeOut(leafLines(Document(words.file).root)); }

template<class Convert>
void convertPath(const SWords& words, const Convert& convert) {
    const Path result = withPath("", words.path, convert);
    writeOut(result.str() + "\n");
}

void schemaPath(const SWords& words) { convertPath(words, &Path::toSchemaPath); }

void dataPath(const SWords& words) { convertPath(words, &Path::fromSchemaPath); }

using TVerb = void (*)(const SWords&);

/// Adds a verb; the words live as long as the application's callback.
std::pair<CLI::App*, std::shared_ptr<SWords>> addVerb(CLI::App& app, const char* name,
                                                      const char* help, TVerb verb) {
    CLI::App* const sub = app.add_subcommand(name, help);
    auto words = std::make_shared<SWords>();
    sub->callback([words, verb] { verb(*words); });
    return {sub, words};
}

void addPath(CLI::App& sub, SWords& words) {
    sub.add_option("PATH", words.path, "a path such as a.b[3].c")->required();
}

void addFile(CLI::App& sub, SWords& words) {
    sub.add_option("FILE", words.file, "the document; - or none is standard input");
}

}  // namespace

void addVerbs(CLI::App& app) {
    {
        const auto [sub, words] = addVerb(app, "print", "Write the document, indented", &print);
        sub->add_flag("--meta", words->writeMeta, "write the member \"meta\" too");
        addFile(*sub, *words);
    }
    {
        const auto [sub, words] = addVerb(app, "get", "Write the value at a path", &get);
        sub->add_flag("--default", words->useDefault,
                      "where the data has no value, write the schema's default");
        addPath(*sub, *words);
        addFile(*sub, *words);
    }
    {
        const auto [sub, words] = addVerb(
            app, "set", "Set the value at a path, making what is missing, and write the document",
            &set);
        addPath(*sub, *words);
        sub->add_option("JSON", words->json, "the value, as JSON text")->required();
        addFile(*sub, *words);
    }
    {
        const auto [sub, words] =
            addVerb(app, "remove", "Remove the value at a path and write the document", &remove);
        addPath(*sub, *words);
        addFile(*sub, *words);
    }
    {
        const auto [sub, words] =
            addVerb(app, "paths", "Write a line for each leaf: its path, a tab, its value", &paths);
        addFile(*sub, *words);
    }
    {
        const auto [sub, words] =
            addVerb(app, "schema-path", "Write the schema path of a data path", &schemaPath);
        addPath(*sub, *words);
    }
    {
        const auto [sub, words] =
            addVerb(app, "data-path", "Write the data path of a schema path", &dataPath);
        sub->add_option("SCHEMAPATH", words->path, "a path below meta.schema")->required();
    }
}

}  // namespace orvid_tool
