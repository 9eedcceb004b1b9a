// SPDX-License-Identifier: MIT
//
// The progress line on standard error: how much of the input has been read, for work that takes
// more than a second, when standard error is a terminal. There is one for the whole run.

#pragma once

#include <cstddef>
#include <string>

namespace orvid_tool {

class Progress {
public:
    /// Shows the line from now on when there is cause to; takes it away in the end.
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Begins to count for another input; `size` is 0 where it is not known. Without a name nothing
    /// is shown.
    static void begin(const std::string& name, std::size_t size);
    /// Counts bytes that were read.
    static void add(std::size_t count);

    /// While one lives, the line is out of the way of other text on the terminal, and time does not
    /// count.
    class Pause {
    public:
        Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
        ~Pause();
    };
};

}  // namespace orvid_tool
