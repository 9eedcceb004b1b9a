// SPDX-License-Identifier: MIT
//
// How a verb goes through its documents, and what becomes of what they fail of.

#include "call/Verb.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "edit/InPlace.h"
#include "input/Input.h"
#include "input/MissingPath.h"
#include "lines/Lines.h"
#include "output/Output.h"
#include "output/Report.h"

namespace orvid_tool {

namespace {

/// The result of the verb for a whole file, and whether it differs from what the file holds.
struct SResult {
    Bytes bytes;
    bool isChange;
};

/// The tree of the last file is left to the system, which takes it back faster than it could be
/// taken apart; it stays reachable until then.
SResult resultOf(const DocumentVerb& verb, const SCall& call, const std::string& file) {
    static std::unique_ptr<Document> document;
    static Document* last = nullptr;
    Input input(file);
    const Bytes text = input.readAll();
    document = std::make_unique<Document>();
    document->place.file = input.name();
    document->text = text.view().substr(0, text.length() - 1);
    SResult result{};
    verb.work(call, *document, result.bytes);
    result.isChange = result.bytes.view() != document->text;
    if (&file == &call.files.back()) {
        last = document.release();
        last->text = std::string_view();
    }
    return result;
}

SLinesEnd runWhole(const DocumentVerb& verb, const SCall& call, const std::string& file,
                   Output& out) {
    const SResult result = resultOf(verb, call, file);
    if (!call.isInPlace) {
        out.write(result.bytes.view());
    } else if (result.isChange) {
        InPlace edited(file);
        edited.write(result.bytes.view());
        edited.finish();
    }
    return {ExitStatus::done, true};
}

SLinesEnd runLinesOf(const DocumentVerb& verb, const SCall& call, const std::string& file,
                     const Report& report, Output& out) {
    Input input(file);
    if (!call.isInPlace) {
        return runLines(verb, call, input, report, out);
    }
    InPlace edited(file);
    const SLinesEnd end = runLines(verb, call, input, report, edited);
    if (end.isComplete) {
        edited.finish();
    }
    return end;
}

/// Whether a failure ends the run, though further files wait.
bool isFatal(const Failure& failure) {
    return failure.status() == ExitStatus::usage ||
           dynamic_cast<const OutputFailure*>(&failure) != nullptr;
}

}  // namespace

Verb::~Verb() = default;

void Verb::prepare(SCall& /*call*/) {}

ExitStatus DocumentVerb::run(const SCall& call, const Report& report, Output& out) const {
    ExitStatus highest = ExitStatus::done;
    for (const std::string& file : call.files) {
        try {
            const SLinesEnd end = call.lines.isOn ? runLinesOf(*this, call, file, report, out)
                                                  : runWhole(*this, call, file, out);
            highest = std::max(highest, end.status);
            if (!end.isComplete) {
                break;
            }
        } catch (const Failure& failure) {
            if (isFatal(failure)) {
                throw;
            }
            report.failure(failure);
            highest = std::max(highest, failure.status());
        }
    }
    return std::max(highest, outcome());
}

ExitStatus DocumentVerb::outcome() const { return ExitStatus::done; }

void DocumentVerb::read(const SCall& /*call*/, Document& document) const {
    readTree(document.place, document.text, document.root);
}

bool DocumentVerb::applyToText(const SCall& /*call*/, const Document& /*document*/,
                               Bytes& /*out*/) const {
    return false;
}

void DocumentVerb::work(const SCall& call, Document& document, Bytes& out) const {
    const std::size_t start = out.length();
    if (applyToText(call, document, out)) {
        return;
    }
    out.cut(start);
    try {
        read(call, document);
        apply(call, document, out);
    } catch (const ko::Orvid::PathNotFound& error) {
        throw missingPath(document.place, document.root, error);
    } catch (const ko::Exception& error) {
        throw Failure(ExitStatus::failed, document.place, error.what());
    } catch (const Unwritable& error) {
        throw Failure(ExitStatus::failed, document.place, error.what());
    }
}

}  // namespace orvid_tool
