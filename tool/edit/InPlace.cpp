// SPDX-License-Identifier: MIT
//
// The library's safe file with the command's failures.

#include "edit/InPlace.h"

#include "output/Failure.h"

namespace orvid_tool {

namespace {

using ko::Orvid::FileException;

template<class Action>
auto translated(const Action& action) {
    try {
        return action();
    } catch (const FileException& error) {
        throw Failure(ExitStatus::inputOutput, SPlace{error.file(), 0, 0, {}},
                      "cannot " + error.action() + ": " + error.reason());
    }
}

}  // namespace

InPlace::InPlace(const std::string& file)
    : m_file(translated([&file] { return ko::Orvid::SafeFile(file); })) {}

void InPlace::write(std::string_view text) {
    translated([this, text] { m_file.write(text); });
}

void InPlace::finish() {
    translated([this] { m_file.commit(); });
}

}  // namespace orvid_tool
