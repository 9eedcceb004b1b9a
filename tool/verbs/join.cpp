// SPDX-License-Identifier: MIT
//
// orvid join: an array of all values.

#include <utility>

#include "call/Options.h"
#include "input/Input.h"
#include "output/Output.h"
#include "output/Report.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

class Join : public Verb {
public:
    const char* name() const override { return "join"; }
    const char* help() const override {
        return "Write one array of all values: records, or any that follow each other";
    }
    const char* examples() const override {
        return "  orvid join <records.jsonl\n"
               "  orvid join --compact first.json second.json";
    }

    void addWords(Words& words, SCall& call) override {
        addFiles(words, call);
        addLayout(words, call);
    }

    ExitStatus run(const SCall& call, const Report& /*report*/, Output& out) const override {
        Element all;
        Element::create(all.data(), ko::Orvid::etArray, &all);
        for (const std::string& file : call.files) {
            addValues(file, all.array());
        }
        try {
            out.write(jsonText(all, call.layout));
        } catch (const Unwritable& error) {
            throw Failure(ExitStatus::failed, error.what());
        }
        return ExitStatus::done;
    }

private:
    static void addValues(const std::string& file, Element::TArray& all) {
        Input input(file);
        const Bytes ended = input.readAll();
        const std::string_view text = ended.view().substr(0, ended.length() - 1);
        std::size_t offset = 0;
        Element value;
        while (const auto end = readNext({input.name(), 0, 0, {}}, text, offset, value)) {
            all.emplace_back(std::move(value));
            offset = *end;
        }
    }
};

}  // namespace

std::unique_ptr<Verb> makeJoin() { return std::make_unique<Join>(); }

}  // namespace orvid_tool
