// SPDX-License-Identifier: MIT
//
// Dom, a document: a root element and what is to be done with its metadata member.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/WriteOptions.h>

#include <iosfwd>
#include <string>

namespace ko::Orvid {

/// A handle on a root element, which it owns when told so. When the document is written, the root's
/// member of the name metaKey() is left out unless writeMeta() is set.
class KO_API Dom {
public:
    static const std::string k_defaultMetaKey;  ///< "meta"

    /// No root, which must be set before the document is read or written: without one both throw
    /// Exception. Meta is not written.
    Dom();
    /// Takes the root over, in constant time; `other` has none afterwards, and its meta key is the
    /// default.
    Dom(Dom&& other) noexcept;
    Dom& operator=(Dom&& other) noexcept;
    Dom(const Dom&) = delete;
    Dom& operator=(const Dom&) = delete;
    /// Deletes the root if the document owns it.
    virtual ~Dom();

    /// The document in a file, with a root of its own, and set to write its meta, so that nothing
    /// is lost when it is saved again. A UTF-8 byte order mark at the beginning is passed over.
    /// Throws FileException, the cause of which is the ParseException where the text is at fault.
    static Dom load(const std::string& file, const ReadOptions& options = ReadOptions::strict());

    /// Gives the file the document as its content, at once (see SafeFile). Throws FileException,
    /// with the file as it was, also where there is no root, where a value that is to be written is
    /// of type etEmpty or a number that is no JSON, and where the generator refuses one (see
    /// Generator::state()). The cause, where there is one, names the element.
    void save(const std::string& file, const WriteOptions& options = WriteOptions()) const;

    /// Deletes an owned former root and takes `root`, which the document does not own already. With
    /// `takeOwnership` it must have been made with new; without, it must outlive the document's
    /// use.
    void setRoot(Element& root, bool takeOwnership);

    Element* root() noexcept { return m_root; }
    const Element* root() const noexcept { return m_root; }
    /// The root. Throws Exception where there is none.
    Element& operator*() { return *required(); }
    const Element& operator*() const { return *required(); }
    bool ownsRoot() const noexcept { return m_ownsRoot; }

    bool writeMeta() const noexcept { return m_writeMeta; }
    void setWriteMeta(bool write) noexcept { m_writeMeta = write; }
    const std::string& metaKey() const noexcept { return m_metaKey; }
    void setMetaKey(const std::string& key) { m_metaKey = key; }

private:
    Element* required() const;
    void release() noexcept;

    Element* m_root = nullptr;
    bool m_ownsRoot = false;
    bool m_writeMeta = false;
    std::string m_metaKey;
};

}  // namespace ko::Orvid

/// Writes the document as JSON text, indented by four blanks (see Generator).
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Dom& dom);
/// Reads JSON text into the document's root as into an element.
KO_API std::istream& operator>>(std::istream& in, ko::Orvid::Dom& dom);

namespace ko {
using ::operator<<;
using ::operator>>;
namespace Orvid {
using ::operator<<;
using ::operator>>;
}  // namespace Orvid
}  // namespace ko
