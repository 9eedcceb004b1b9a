// SPDX-License-Identifier: MIT
//
// Names that the library exported before paths were PathViews, before patches and defaults had
// options, and before a constructor was inline. They stay in its list of symbols, and no header
// declares them: what is compiled anew uses the names of the headers. The members are functions
// here whose first parameter is the object, which is how they are called.

#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Path.h>
#include <ko/Orvid/SchemaDefaults.h>

#include <cstddef>
#include <new>
#include <string>
#include <string_view>

namespace ko::Orvid {

KO_API void applyPatch(Element& target, const Element& patch);
KO_API Element makePatch(const Element& from, const Element& to);
KO_API std::size_t fillDefaults(Element& element);

void applyPatch(Element& target, const Element& patch) {
    applyPatch(target, patch, PatchOptions());
}

Element makePatch(const Element& from, const Element& to) {
    return makePatch(from, to, DiffOptions());
}

std::size_t fillDefaults(Element& element) { return fillDefaults(element, FillOptions()); }

#ifdef __ELF__

KO_API Element& formerGet(Element& self,
                          const Path& path) __asm__("_ZN2ko5Orvid7Element3getERKNS0_4PathE");
KO_API const Element& formerGet(const Element& self,
                                const Path& path) __asm__("_ZNK2ko5Orvid7Element3getERKNS0_4PathE");
KO_API const Element& formerTryGet(
    const Element& self, const Path& path,
    const Element& fallback) __asm__("_ZNK2ko5Orvid7Element6tryGetERKNS0_4PathERKS1_");
KO_API bool formerPathExists(const Element& self, const Path& path, EType type) __asm__(
    "_ZNK2ko5Orvid7Element10pathExistsERKNS0_4PathENS0_5ETypeE");
KO_API void formerConstructor(Number* self, std::string_view text) __asm__(
    "_ZN2ko5Orvid6NumberC1ESt17basic_string_viewIcSt11char_traitsIcEE");
KO_API void formerBaseConstructor(Number* self, std::string_view text) __asm__(
    "_ZN2ko5Orvid6NumberC2ESt17basic_string_viewIcSt11char_traitsIcEE");

Element& formerGet(Element& self, const Path& path) { return self.get(PathView(path)); }

const Element& formerGet(const Element& self, const Path& path) { return self.get(PathView(path)); }

const Element& formerTryGet(const Element& self, const Path& path, const Element& fallback) {
    return self.tryGet(PathView(path), fallback);
}

bool formerPathExists(const Element& self, const Path& path, EType type) {
    return self.pathExists(PathView(path), type);
}

// The constructor of a std::string_view is the inline one, whose name this is.
void formerConstructor(Number* self, std::string_view text) {
    new (self) Number(std::string(text));
}

void formerBaseConstructor(Number* self, std::string_view text) {
    new (self) Number(std::string(text));
}

#endif

}  // namespace ko::Orvid
