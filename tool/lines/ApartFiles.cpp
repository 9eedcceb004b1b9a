// SPDX-License-Identifier: MIT
//
// Comparing the files of a call with each other.

#include "lines/ApartFiles.h"

#include <unistd.h>

#include <string>

#include "input/Input.h"
#include "output/AppendedFile.h"
#include "output/Failure.h"
#include "output/FileIdentity.h"

namespace orvid_tool {

namespace {

FileIdentity identityOfInput(const std::string& file) {
    return file == k_standardInput ? FileIdentity(STDIN_FILENO) : FileIdentity(file);
}

Failure refusal(const std::string& file, const char* text) {
    return {ExitStatus::usage, Location{file, 0, 0, {}}, text};
}

Failure readRejects(const std::string& input) {
    return refusal(input, "--rejects cannot append to the file that is read");
}

}  // namespace

void requireApart(const Call& call) {
    const FileIdentity out(STDOUT_FILENO);
    const FileIdentity rejects(call.lines.rejects.value_or(""));
    if ((!call.isInPlace && rejects == out) || rejects == FileIdentity(STDERR_FILENO)) {
        throw refusal(*call.lines.rejects, "--rejects cannot append to the file of another output");
    }
    for (const auto& file : {call.schemaFile, call.changeFile}) {
        if (file && rejects == identityOfInput(*file)) {
            throw readRejects(inputName(*file));
        }
    }
    for (const std::string& file : call.files) {
        const FileIdentity input = identityOfInput(file);
        if (rejects == input) {
            throw readRejects(inputName(file));
        }
        if (!call.isInPlace && input == out) {
            throw refusal(inputName(file), "the file is read, and cannot be the output as well");
        }
    }
}

void requireApart(const AppendedFile& rejects, const Input& input) {
    if (rejects.identity() == input.identity()) {
        throw readRejects(input.name());
    }
}

}  // namespace orvid_tool
