// SPDX-License-Identifier: MIT
//
// The functions that no header declares any more, under the names by which they were linked.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace ko::Orvid {
KO_API void applyPatch(Element& target, const Element& patch);
KO_API Element makePatch(const Element& from, const Element& to);
KO_API std::size_t fillDefaults(Element& element);
#ifdef __ELF__
Element& formerGet(Element& self,
                   const Path& path) __asm__("_ZN2ko5Orvid7Element3getERKNS0_4PathE");
const Element& formerGet(const Element& self,
                         const Path& path) __asm__("_ZNK2ko5Orvid7Element3getERKNS0_4PathE");
const Element& formerTryGet(const Element& self, const Path& path, const Element& fallback) __asm__(
    "_ZNK2ko5Orvid7Element6tryGetERKNS0_4PathERKS1_");
bool formerPathExists(const Element& self, const Path& path, EType type) __asm__(
    "_ZNK2ko5Orvid7Element10pathExistsERKNS0_4PathENS0_5ETypeE");
void formerConstructor(Number* self, std::string_view text) __asm__(
    "_ZN2ko5Orvid6NumberC1ESt17basic_string_viewIcSt11char_traitsIcEE");
#endif
}  // namespace ko::Orvid

namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::parse;
using ko::Orvid::Path;

TEST(FormerSymbols, patches_and_defaults_without_options) {
    void (*const apply)(Element&, const Element&) = &ko::Orvid::applyPatch;
    Element (*const make)(const Element&, const Element&) = &ko::Orvid::makePatch;
    std::size_t (*const fill)(Element&) = &ko::Orvid::fillDefaults;
    Element root = parse(R"({"a":1,"meta":{"schema":{"properties":{"b":{"default":2}}}}})");
    EXPECT_EQ(fill(root), 1U);
    const Element patch = make(root, parse("{}"));
    apply(root, patch);
    EXPECT_TRUE(root == parse("{}"));
}

#ifdef __ELF__
TEST(FormerSymbols, lookups_by_path) {
    Element root = parse(R"({"a":[1,2]})");
    const Element& view = root;
    const Element fallback("none");
    EXPECT_EQ(&ko::Orvid::formerGet(root, Path("a[1]")), &root.get("a[1]"));
    EXPECT_EQ(&ko::Orvid::formerGet(view, Path("a[1]")), &root.get("a[1]"));
    EXPECT_EQ(&ko::Orvid::formerTryGet(view, Path("b"), fallback), &fallback);
    EXPECT_TRUE(ko::Orvid::formerPathExists(view, Path("a"), ko::Orvid::etArray));
    EXPECT_FALSE(ko::Orvid::formerPathExists(view, Path("a"), ko::Orvid::etObject));
}

TEST(FormerSymbols, a_number_of_a_view) {
    alignas(Number) std::byte memory[sizeof(Number)];
    auto* const number = reinterpret_cast<Number*>(memory);
    ko::Orvid::formerConstructor(number, std::string_view("1.50x", 4));
    EXPECT_EQ(number->toString(), "1.50");
    number->~Number();
}

#endif

}  // namespace
