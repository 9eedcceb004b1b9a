// SPDX-License-Identifier: MIT
//
// The small interface through which each library reads, writes and edits the same documents. Every
// operation is done the way the library's own documentation does it.

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "summary.h"

namespace orvid_bench {

/// The path to one value in both notations.
struct PathTexts {
    std::string dotted;   ///< a.b[3].c
    std::string pointer;  ///< /a/b/3/c
};

/// A document in a library's own form.
class Tree {
public:
    Tree() = default;
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    virtual ~Tree() = default;

    virtual Summary summary() const = 0;
    /// The document as text, indented by four spaces where the library can. write() makes the same
    /// text, but only returns its length, and need not copy it out of the library's own buffer.
    virtual std::string text() const = 0;
    virtual std::size_t write() const = 0;
    virtual std::unique_ptr<Tree> copy() const = 0;
    /// `other` is a tree of the same library.
    virtual bool equals(const Tree& other) const = 0;
    /// Sets two members of the root, which is an object: "edited" to 1, "editor" to "bench".
    virtual void edit() = 0;
    /// The address of the value to which the path's text leads; null when there is none.
    virtual const void* lookUp(const PathTexts& path) const = 0;
    /// The string or the integer at the path, as text.
    virtual std::string scalar(const PathTexts& path) const = 0;
};

struct Peer {
    std::string name;
    std::unique_ptr<Tree> (*read)(const std::string& text);
    /// The member count beyond which reading one object takes too long, since it is quadratic; 0:
    /// none.
    std::size_t widest = 0;
    /// The same for comparing.
    std::size_t widestCompared = 0;
    /// Whether a tree keeps the buffer that it was written to, so that only its first write
    /// allocates.
    bool keepsBuffer = false;

    bool canRead(std::size_t members) const { return widest == 0 || members <= widest; }
    bool canCompare(std::size_t members) const {
        return canRead(members) && (widestCompared == 0 || members <= widestCompared);
    }
};

Peer orvid();
Peer nlohmannOrdered();
Peer jsoncpp();
Peer jsonC();
Peer rapidJson();
Peer boostJson();

/// All of them, the library itself first.
inline std::vector<Peer> allPeers() {
    return {orvid(), nlohmannOrdered(), jsoncpp(), jsonC(), rapidJson(), boostJson()};
}

}  // namespace orvid_bench
