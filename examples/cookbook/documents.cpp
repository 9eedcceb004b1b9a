// SPDX-License-Identifier: MIT
//
// Recipes: documents with a schema of their own, and documents in files.

#include "recipe.h"

#include <ko/Orvid.h>

#include <iostream>

using namespace ko::Orvid;

namespace cookbook {

namespace {

void useDefaults() {
    const Element root = parse(R"({
        "meta": { "schema": { "properties": { "port": { "default": 8080 } } } },
        "host": "alpha" })");
    const Element none;
    std::cout << root.tryGetUsingDefault("port", none).to<int>() << "\n";
    std::cout << explainDefault(root, "port").text() << "\n";
}

void writeDefaults() {
    Element root = parse(R"({
        "meta": { "schema": { "properties": {
            "limits": { "properties": { "cpu": { "default": 1 } } } } } },
        "host": "alpha" })");
    const std::size_t count = fillDefaults(root);
    root.object().erase("meta");
    std::cout << count << " written: " << serialize(root) << "\n";
}

void editFile() {
    const std::string file = inFolder("settings.json");
    replaceFile(file, "{\n  // not more than 10\n  \"retries\": 3, // was 2\n  \"q\": 1.0\n}\n");
    Dom dom = Dom::load(file);
    dom->get("retries").set(5);
    dom.save(file);
    std::cout << readFile(file);
}

void showPlace() {
    const Dom dom = Dom::parse("{\n  \"port\": \"80\"\n}");
    const auto place = dom.placeOf(dom->get("port"));
    std::cout << "line " << place->line << ", column " << place->column << "; its key in column "
              << place->key.column << "\n";
}

void describeErrors() {
    const Dom dom = Dom::parse("{\n  \"port\": \"80\"\n}");
    try {
        dom->get("port").to<int>();
    } catch (const Exception& error) {
        std::cout << describe(error, dom) << "\n";
    }
    try {
        dom->get("host.name");
    } catch (const PathNotFound& error) {
        std::cout << describe(error) << "\n" << error.key() << " is missing\n";
    }
}

void showErrorOfFile() {
    const std::string file = inFolder("wrong.json");
    replaceFile(file, "{\n  \"host\": \"alpha\",\n  \"port\": 8O\n}\n");
    try {
        const Dom dom = Dom::load(file);
    } catch (const FileException& error) {
        const auto* cause = dynamic_cast<const ParseException*>(error.cause());
        if (cause == nullptr) {
            throw;
        }
        std::cout << error.file().substr(error.file().rfind('/') + 1) << ":" << cause->firstLine()
                  << ":" << cause->firstColumn() << ": " << cause->message() << "\n"
                  << sourceExcerpt(readFile(file), *cause);
    }
}

void replaceInOneStep() {
    const std::string file = inFolder("list.json");
    SafeFile out(file);
    out.write(serialize(makeObject({{"id", 1}})));
    out.write("\n");
    out.commit();
    std::cout << readFile(file);
}

}  // namespace

std::vector<Recipe> documents() {
    return {
        {"Take a default from the document's own schema", useDefaults},
        {"Write all defaults into the data", writeDefaults},
        {"Change one value in a file and keep its comments", editFile},
        {"Say where a value stands in its file", showPlace},
        {"Explain an error to a person", describeErrors},
        {"Load a file and show where it is wrong", showErrorOfFile},
        {"Replace a file in one step", replaceInOneStep},
    };
}

}  // namespace cookbook
