// SPDX-License-Identifier: MIT
//
// InPlace, the output that becomes the new content of a file.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <string_view>

#include "output/Output.h"

namespace orvid_tool {

/// The file has its old content until finish() and whenever something fails before. Throws Failure,
/// which names the file.
class InPlace : public Output {
public:
    explicit InPlace(const std::string& file);
    void write(std::string_view text) override;
    void flush() override {}
    /// The file gets its new content. Nothing may follow.
    void finish();

private:
    ko::Orvid::SafeFile m_file;
};

}  // namespace orvid_tool
