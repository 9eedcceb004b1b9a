// SPDX-License-Identifier: MIT
//
// Elements as values: built in the code, moved, compared, read in one step.

#include <ko/Orvid.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace ko::Orvid;

namespace {

void build() {
    Element server = makeObject({{"host", "a.example"}, {"ports", makeArray({80, 443})}});
    Element settings = makeObject({{"servers", makeArray({std::move(server)})}, {"debug", false}});
    std::cout << serialize(settings, WriteOptions::pretty());

    const Element same =
        R"({"servers": [{"host": "a.example", "ports": [80, 443.0]}], "debug": false})"_json;
    std::cout << "the same: " << std::boolalpha << (settings == same) << "\n";
}

void read() {
    const Element settings =
        R"({"port": 8080, "ratio": -0.5, "name": "main", "size": 3000000000})"_json;
    const int port = settings.get("port").to<int>();
    const double ratio = settings.get("ratio").to<double>();
    const int retries = settings.toOr<int>("retries", 3);
    std::cout << port << " " << ratio << " " << retries << "\n";
    try {
        std::cout << settings.get("size").to<int>();
    } catch (const Exception& error) {
        std::cout << *error.elementPath() << ": " << error.what() << "\n";
    }
}

void move() {
    Element queue = R"({"todo": [{"id": 1}, {"id": 2}], "done": []})"_json;
    Element& job = queue.get("todo[0]");
    queue.get("done").array().emplace_back(std::move(job));
    std::cout << "moved to " << queue.get("done[0].id").path()
              << ", left: " << serialize(queue.get("todo")) << "\n";
}

void exchange() {
    Element pair = R"({"first": "b", "second": "a"})"_json;
    Element& first = pair.get("first");
    Element& second = pair.get("second");
    if (second < first) {
        swap(first, second);
    }
    std::cout << first.to<std::string_view>() << " " << second.to<std::string_view>() << "\n";
}

void sort() {
    Element list = R"([[2], "x", 10, null, 9.5, [1, 5]])"_json;
    Element::TArray& items = list.array();
    std::vector<Element> sorted(std::make_move_iterator(items.begin()),
                                std::make_move_iterator(items.end()));
    std::sort(sorted.begin(), sorted.end());
    std::move(sorted.begin(), sorted.end(), items.begin());
    std::cout << serialize(list) << "\n";
}

void lookUpViews() {
    const std::string_view text = R"({"a": {"b": [1, 2]}} and more)";
    Element root = parse(text.substr(0, 20));
    const std::string_view path = "path a.b[1] in a longer text";
    std::cout << root.get(path.substr(5, 6)).to<int>() << "\n";
}

void count() {
    const Element list = R"([1, 1.0, 1e0, "1", [2], [2.00]])"_json;
    std::unordered_set<Element> different(list.array().begin(), list.array().end());
    std::cout << different.size() << " different values among " << list.array().size() << "\n";

    const Element object = R"({"a": 1, "b": 2})"_json;
    for (const auto& [key, value] : object.object()) {
        std::cout << key << "=" << value.to<int>() << "\n";
    }
}

}  // namespace

int main() {
    build();
    read();
    move();
    exchange();
    sort();
    lookUpViews();
    count();
}
