// SPDX-License-Identifier: MIT
//
// Dom, a document: a root element, what is to be done with its metadata member, and the text that
// it was read from.

#pragma once

#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/SourcePlace.h>
#include <ko/Orvid/WriteOptions.h>

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

class FileVersion;
class Source;

/// A handle on a root element, which it owns when asked to. When the document is written, the
/// root's member of the name metaKey() is left out unless writeMeta() is set. An operation that
/// states no cost is O(1).
class KO_API Dom {
public:
    static const std::string k_defaultMetaKey;  ///< "meta"

    /// No root, which must be set before the document is read or written: without one both throw
    /// Exception. Meta is not written. Constant cost.
    Dom();
    /// Takes the root over, in constant time; `other` has none afterwards, and its meta key is the
    /// default. Assignment deletes a root that was owned.
    Dom(Dom&& other) noexcept;
    Dom& operator=(Dom&& other) noexcept;
    Dom(const Dom&) = delete;
    Dom& operator=(const Dom&) = delete;
    /// Deletes the root if the document owns it. Linear in the size of an owned tree.
    virtual ~Dom();

    ///@{
    /// The document in a file or a text, with a root of its own, and set to write its meta, so that
    /// nothing is lost when it is saved again. It keeps the text, and beside the tree, 24 bytes for
    /// each value, where each stands, so that text() and save() can leave all that is unchanged as
    /// it is. A UTF-8 byte order mark at the beginning is skipped, and kept. load() throws
    /// FileException, the cause of which is the ParseException where the text is in error; parse()
    /// throws that itself. Linear cost.
    static Dom load(const std::string& file, const ReadOptions& options = ReadOptions::jsonc());
    static Dom parse(std::string_view text, const ReadOptions& options = ReadOptions::jsonc());
    ///@}

    /// The document as text. One that was loaded or parsed keeps its text: comments, layout and
    /// spelling stay, and only what differs between text and tree is written anew, in the layout of
    /// its neighbours. It does not matter how the tree was changed. Any other document is laid out
    /// as with the default WriteOptions. docs/editing.md shows what becomes of comments.
    ///
    /// Reading the text back, with the options it was read with, gives a tree that is equal to this
    /// one. Without a change it is the text that was read, byte for byte. Throws Exception, with
    /// the element in error as context, for what JSON cannot express (a string that is no UTF-8
    /// included, unless the text was read with options that accept such strings), and where there
    /// is no root. Linear cost, except for arrays in which many items changed at once.
    std::string text() const;

    /// The same for a tree in which these values are known to have been moved, from where they
    /// stood in the text to where they stand in the tree: text() alone compares, and so cannot
    /// follow a value that others equal. A former place that leads nowhere has no effect, and a
    /// value is moved once: the first of its places counts. A value whose new place leads nowhere
    /// is gone, and its comments with it. PatchOptions::moved gets the places of a patch; for a
    /// merge patch `{{JsonPointer(), JsonPointer()}}` says that nothing was moved. Where memory is
    /// refused, std::bad_alloc is thrown, and document, text and places are as they were.
    std::string text(const MovedPlaces& moved) const;

    /// Gives the file text() as its content, at once (see SafeFile); a file that has that content
    /// already is left alone. Throws FileException, with the file as it was, also where text()
    /// would throw; the element in error is its context then. Costs text() and the writing.
    ///
    /// The file that the document was loaded from must still be as it was then, or as this document
    /// saved it last: otherwise the edits of others would be lost, and FileException is thrown with
    /// ESTALE as its error(). A FileLock, from before load() to after save(), keeps others waiting
    /// who lock the file too.
    void save(const std::string& file) const;

    /// The same with text(moved): the places count from the text that was read, also where the
    /// document was saved since. Braces alone, `save(file, {})`, are WriteOptions.
    template<class Moves, std::enable_if_t<std::is_same_v<Moves, MovedPlaces>, int> = 0>
    void save(const std::string& file, const Moves& moved) const {
        saveMoved(file, moved);
    }

    /// The same with the document laid out anew, without its comments. Throws also where the
    /// generator refuses a value (see Generator::state()). Linear cost.
    void save(const std::string& file, const WriteOptions& options) const;

    /// Where the element stood in the text that the document was loaded or parsed from. Nothing for
    /// an element that was not read from there, or that is elsewhere in the tree now; after a
    /// successful applyPatch() that is every element of its target except the target itself, since
    /// the patch works on a copy. Linear cost.
    std::optional<SourcePlace> placeOf(const Element& element) const;
    /// The file that the document was loaded from; empty where it was not.
    const std::string& file() const noexcept;

    /// Deletes an owned former root and takes `root`, which the document does not own already. With
    /// `takeOwnership` it must have been made with new; without, it must outlive the document's
    /// use. The text that the document was read from stays, and text() compares the new root with
    /// it. Linear in the size of the tree that is deleted.
    void setRoot(Element& root, bool takeOwnership);

    /// The root, or null. A root that the document owns lives until another takes its place, or the
    /// document is destroyed.
    Element* root() noexcept KO_LIFETIME_BOUND { return m_root; }
    const Element* root() const noexcept KO_LIFETIME_BOUND { return m_root; }
    /// The same. Throws Exception where there is none. O(1).
    Element& operator*() KO_LIFETIME_BOUND { return *required(); }
    const Element& operator*() const KO_LIFETIME_BOUND { return *required(); }
    Element* operator->() KO_LIFETIME_BOUND { return required(); }
    const Element* operator->() const KO_LIFETIME_BOUND { return required(); }
    bool ownsRoot() const noexcept { return m_ownsRoot; }

    bool writeMeta() const noexcept { return m_writeMeta; }
    void setWriteMeta(bool write) noexcept { m_writeMeta = write; }
    const std::string& metaKey() const noexcept { return m_metaKey; }
    void setMetaKey(const std::string& key) { m_metaKey = key; }

private:
    Element* required() const;
    static Dom read(std::string text, const ReadOptions& options, const std::string& file);
    void release() noexcept;
    std::string sourceText(const MovedPlaces& moved) const;
    void saveMoved(const std::string& file, const MovedPlaces& moved) const;
    bool isLoadedFrom(const std::string& file) const;

    Element* m_root = nullptr;
    bool m_ownsRoot = false;
    bool m_writeMeta = false;
    std::string m_metaKey;
    std::unique_ptr<const Source> m_source;  ///< null unless it was loaded or parsed
    std::unique_ptr<FileVersion> m_version;  ///< null unless it was loaded
};

}  // namespace ko::Orvid

/// Writes the document as JSON text, indented by four spaces (see Generator). Linear cost.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Dom& dom);
/// Reads JSON text into the document's root as into an element. Linear cost.
KO_API std::istream& operator>>(std::istream& in, ko::Orvid::Dom& dom);

namespace ko {
using ::operator<<;
using ::operator>>;
namespace Orvid {
using ::operator<<;
using ::operator>>;
}  // namespace Orvid
}  // namespace ko
