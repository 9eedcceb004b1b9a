// SPDX-License-Identifier: MIT
//
// How a verb goes through its documents, and what becomes of what they fail of.

#include "call/Verb.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "edit/InPlace.h"
#include "input/Input.h"
#include "input/located.h"
#include "input/MissingPath.h"
#include "lines/ApartFiles.h"
#include "lines/Lines.h"
#include "output/FileIdentity.h"
#include "output/Output.h"
#include "output/Report.h"

namespace orvid_tool {

namespace {

/// What a file is read into, and where its result goes.
struct Whole {
    Document document;
    Bytes result;
    bool isChange = false;  ///< whether the result differs from what the file holds
    ko::Orvid::FileStamp stamp;
};

/// The result of the verb for a whole file.
std::unique_ptr<Whole> resultOf(const DocumentVerb& verb, const Call& call,
                                const std::string& file) {
    auto whole = std::make_unique<Whole>();
    Input input(file);
    whole->stamp = input.stamp();
    const Bytes text = input.readAll();
    Document& document = whole->document;
    document.location.file = input.name();
    document.text = text.view().substr(0, text.length() - 1);
    verb.work(call, document, whole->result);
    whole->isChange = whole->result.view() != document.text;
    document.text = std::string_view();
    return whole;
}

/// The tree of the last file is left to the system, which takes it back faster than it could be
/// taken apart; it stays reachable until then.
void leave(std::unique_ptr<Whole> whole, bool isLast) {
    static Whole* last = nullptr;
    if (isLast) {
        last = whole.release();
        last->result = Bytes();
    }
}

/// A file that another program has changed meanwhile is read, and edited, again.
std::unique_ptr<Whole> edit(const DocumentVerb& verb, const Call& call, const std::string& file) {
    constexpr int mostTries = 10;
    const EditLock lock(file);
    for (int tries = 1;; ++tries) {
        std::unique_ptr<Whole> whole = resultOf(verb, call, file);
        try {
            if (whole->isChange) {
                InPlace edited(file);
                edited.write(whole->result.view());
                edited.finish(whole->stamp);
            }
            return whole;
        } catch (const ChangedMeanwhile&) {
            if (tries == mostTries) {
                throw;
            }
        }
    }
}

LinesEnd runWhole(const DocumentVerb& verb, const Call& call, const std::string& file,
                  Output& out) {
    if (verb.streams(call, file, out)) {
        return {ExitStatus::done, true};
    }
    std::unique_ptr<Whole> whole;
    if (call.isInPlace) {
        whole = edit(verb, call, file);
    } else {
        whole = resultOf(verb, call, file);
        out.write(whole->result.view());
    }
    leave(std::move(whole), &file == &call.files.back());
    return {ExitStatus::done, true};
}

/// In an edit that keeps the text a last record that lacks its newline goes without one, unless the
/// records of another file follow. A mark goes only before all other records.
KeptEnds keptEnds(const Call& call, const std::string& file) {
    const bool keepsText = call.isEdit && !call.layout.isAsked;
    return {(keepsText || call.isChoice) && (call.isInPlace || &file == &call.files.front()),
            keepsText && (call.isInPlace || &file == &call.files.back())};
}

LinesEnd runLinesOf(const DocumentVerb& verb, const Call& call, const std::string& file,
                    const Report& report, Output& out) {
    const KeptEnds kept = keptEnds(call, file);
    if (!call.isInPlace) {
        Input input(file);
        return runLines(verb, call, input, kept, report, out);
    }
    const EditLock lock(file);
    Input input(file);
    InPlace edited(file);
    const LinesEnd end = runLines(verb, call, input, kept, report, edited);
    if (end.isComplete) {
        edited.finish(input.stamp());
    }
    return end;
}

/// Another name of the file keeps the old content, for the new one is a new file.
void warnOfLinks(const std::string& file, const Report& report) {
    struct stat status = {};
    if (stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink > 1) {
        report.note(file + ": has " + std::to_string(status.st_nlink) +
                    " names (hard links); the others keep the old content");
    }
}

constexpr const char* k_noneChanged = "; no file was changed";

void requireReadable(const std::string& file) {
    if (access(file.c_str(), R_OK) != 0) {
        throw systemFailure(inputName(file));
    }
}

/// A file that is named twice would be edited twice.
void requireDistinct(const std::vector<std::string>& files) {
    std::vector<FileIdentity> before;
    for (const std::string& file : files) {
        const FileIdentity identity(file);
        const auto same = std::find(before.begin(), before.end(), identity);
        if (same != before.end()) {
            const std::string& first = files[static_cast<std::size_t>(same - before.begin())];
            throw Failure(ExitStatus::usage,
                          "the file \"" + first + "\" is named twice" +
                              (first == file ? "" : ", as \"" + file + "\" too") + k_noneChanged);
        }
        before.push_back(identity);
    }
}

/// The place of what cannot be written, if that is in the document and was not made of it.
Location placeOf(const Unwritable& error, const Document& document) {
    const bool isThere =
        error.isBelow(document.root) || (document.kept && error.isBelow(**document.kept));
    Location at = document.location;
    at.path = isThere ? error.place().path : std::nullopt;
    at.isPointer = isThere && error.place().isPointer;
    return at;
}

/// Whether a failure ends the run, though further files wait.
bool isFatal(const Failure& failure) {
    return failure.status() == ExitStatus::usage ||
           dynamic_cast<const OutputFailure*>(&failure) != nullptr;
}

}  // namespace

Verb::~Verb() = default;

void Verb::prepare(Call& /*call*/) {}

ExitStatus DocumentVerb::run(const Call& call, const Report& report, Output& out) const {
    if (call.lines.isOn) {
        requireApart(call);
    }
    if (call.isInPlace && call.files.size() > 1) {
        requireAllThere(call.files);
        requireDistinct(call.files);
    }
    for (const std::string& note : call.notes) {
        report.note(note);
    }
    ExitStatus highest = ExitStatus::done;
    if (call.lines.isOn) {
        beginLines(call, out);
    }
    for (const std::string& file : call.files) {
        if (call.isInPlace) {
            warnOfLinks(file, report);
        }
        try {
            const LinesEnd end = call.lines.isOn ? runLinesOf(*this, call, file, report, out)
                                                 : runWhole(*this, call, file, out);
            highest = std::max(highest, end.status);
            if (!end.isComplete) {
                break;
            }
        } catch (const Failure& failure) {
            if (isFatal(failure)) {
                throw;
            }
            report.failure(hinted(failure, file));
            highest = std::max(highest, failure.status());
        } catch (const std::bad_alloc&) {
            report.failure(memoryFailure({inputName(file), 0, 0, {}}));
            highest = std::max(highest, ExitStatus::inputOutput);
        }
    }
    return std::max(highest, outcome(report));
}

std::string DocumentVerb::hintForFile(const std::string& /*word*/) const { return ""; }

/// A file that is not there, or is none, is mostly a slip in the call, which is not to be half done
/// then.
void DocumentVerb::requireAllThere(const std::vector<std::string>& files) const {
    for (const std::string& file : files) {
        try {
            requireReadable(file);
            requireReplaceable(file);
        } catch (const Failure& found) {
            const Failure failure = hinted(found, file);
            throw Failure(failure.status(), failure.location(),
                          failure.text() + std::string(k_noneChanged));
        }
    }
}

/// The failure of a file with the hint for one that there is not.
Failure DocumentVerb::hinted(const Failure& failure, const std::string& file) const {
    const bool isWord = failure.location().file == file && file.find('/') == std::string::npos &&
                        !endsAsFile(file) && access(file.c_str(), F_OK) != 0;
    std::string hint = isWord ? hintForFile(file) : "";
    if (!hint.empty() && file.front() == '-') {
        hint = "; after -- no word is an option";  // nor meant to be anything but one
    }
    return hint.empty() ? failure
                        : Failure(failure.status(), failure.location(), failure.text() + hint);
}

ExitStatus DocumentVerb::outcome(const Report& /*report*/) const { return ExitStatus::done; }

void DocumentVerb::read(const Call& call, Document& document) const {
    readTree(document.location, document.text, document.root, documentOptions(call.isStrict));
}

bool DocumentVerb::streams(const Call& /*call*/, const std::string& /*file*/,
                           Output& /*out*/) const {
    return false;
}

void DocumentVerb::beginLines(const Call& /*call*/, Output& /*out*/) const {}

bool DocumentVerb::applyToText(const Call& /*call*/, const Document& /*document*/,
                               Bytes& /*out*/) const {
    return false;
}

void DocumentVerb::work(const Call& call, Document& document, Bytes& out) const {
    const std::size_t start = out.length();
    if (applyToText(call, document, out)) {
        return;
    }
    out.cut(start);
    try {
        read(call, document);
        apply(call, document, out);
    } catch (const ko::Orvid::PathNotFound& error) {
        throw located(missingPath(document.location, document.root, error), document);
    } catch (const Failure& failure) {
        throw located(failure, document);
    } catch (const ko::Exception& error) {
        throw Failure(ExitStatus::failed, document.location, error.what());
    } catch (const Unwritable& error) {
        throw located({ExitStatus::failed, placeOf(error, document), error.what()}, document);
    }
}

}  // namespace orvid_tool
