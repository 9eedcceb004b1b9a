// SPDX-License-Identifier: MIT
//
// What the parts of a query do, for PlainQuery.cpp, which reads them.

#pragma once

#include <ko/Orvid.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvid_test::plain {

using ko::Orvid::Element;
using Nodes = std::vector<const Element*>;

/// `$` and `@`.
struct Place {
    const Element* root;
    const Element* current;
};

using Query = std::function<Nodes(const Place&)>;
using Selector = std::function<Nodes(const Place&, const Element&)>;
using Test = std::function<bool(const Place&)>;
using Value = std::function<std::optional<Element>(const Place&)>;

/// Thrown by what follows when a query has cost too much since startBudget().
struct TooMuch {};
void startBudget();

Query applied(Query before, bool isDescendant, std::vector<Selector> selectors);
Selector everyChild();
Selector named(const std::string& name);
Selector childrenThat(Test test);
Selector itemAt(long long index);
Selector slice(std::optional<long long> start, std::optional<long long> end, long long step);

Value constant(const Element& element);
/// The value of a single node, or nothing.
Value valueOf(const Query& query);
/// By one of the six operators.
bool compare(const std::optional<Element>& a, const std::string& mark,
             const std::optional<Element>& b);
std::optional<Element> lengthOf(const std::optional<Element>& value);

}  // namespace orvid_test::plain
