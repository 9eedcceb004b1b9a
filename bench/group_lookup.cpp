// SPDX-License-Identifier: MIT
//
// The jobs on single elements of a document: path get from text, default lookup, create, find, and
// the path text of an element.

#include <ko/Orvid.h>

#include <memory>
#include <stdexcept>

#include "group.h"

namespace orvid_bench {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::Path;

std::shared_ptr<Element> treeOf(const std::string& text) {
    auto root = std::make_shared<Element>();
    DomParser().parse(*root, text);
    return root;
}

struct Lookup {
    Document document;
    std::string what;
    PathTexts path;
    std::string expected;
    bool hasBars = false;
};

Job lookUpJob(const Peer& peer, const Lookup& lookup) {
    const std::shared_ptr<Tree> tree = peer.read(lookup.document.text);
    if (const std::string found = tree->scalar(lookup.path); found != lookup.expected) {
        throw std::runtime_error(peer.name + " finds " + found + " at " + lookup.path.dotted);
    }
    return {peer.name, [tree, path = lookup.path] { keep(tree->lookUp(path)); }};
}

Group lookUpGroup(const Lookup& lookup) {
    Group group{"path get", lookup.what, {}};
    for (const Peer& peer : allPeers()) {
        if (peer.canRead(lookup.document.widest)) {
            group.jobs.push_back(lookUpJob(peer, lookup));
        }
    }
    const auto root = treeOf(lookup.document.text);
    group.jobs.push_back(
        {"orvid, Path kept", [root, path = Path(lookup.path.dotted)] { keep(&root->get(path)); }});
    group.jobs.push_back(
        {"orvid, JsonPath kept", [root, query = JsonPath::fromPath(Path(lookup.path.dotted))] {
             keep(query.first(*root));
         }});
    group.noAllocations = "orvid, Path kept";
    if (lookup.hasBars) {
        group.bars = {{"orvid", "ordered_json", 1},
                      {"orvid", "RapidJSON", 1},
                      {"orvid", "Boost.JSON", 1},
                      {"orvid", "jsoncpp", 1}};
    }
    group.bars.push_back({"orvid, JsonPath kept", "orvid, Path kept", 1.3});
    return group;
}

Lookup wideLookup(std::size_t members) {
    const std::size_t sought = members / 2;
    const std::string key = wideKey(sought);
    return {{"", wideObject(members), members},
            "wide object, " + std::to_string(members) + " members",
            {key, "/" + key},
            std::to_string(sought)};
}

std::vector<Lookup> lookups(const std::vector<Document>& documents) {
    const Document settingsDocument{"settings", settings(20)};
    std::vector<Lookup> result{
        {settingsDocument, "settings, two steps", {"section7.owner", "/section7/owner"}, "team"},
        {settingsDocument,
         "settings, three steps",
         {"section7.servers[1].host", "/section7/servers/1/host"},
         "beta.example",
         true},
        {{"deep", deepObject(100)}, "100 steps", deepPath(100), "1"},
        wideLookup(10),
        wideLookup(1000),
        wideLookup(100000)};
    for (const Document& document : documents) {
        if (document.name == "citm_catalog") {
            result.push_back({document,
                              "citm_catalog, seven steps",
                              {"performances[3].seatCategories[0].areas[1].areaId",
                               "/performances/3/seatCategories/0/areas/1/areaId"},
                              "205706006",
                              true});
        }
    }
    return result;
}

Group defaultGroup() {
    const auto root = treeOf(settings(20));
    const std::string present = "section7.servers[1].host";
    const std::string missing = "section7.servers[1].port";
    if (root->getUsingDefault(missing).number().toInt() != 8080) {
        throw std::runtime_error("the schema's default is not found");
    }
    Group group{"default lookup", "settings, three steps", {}};
    group.jobs = {
        {"orvid", [=] { keep(&root->tryGetUsingDefault(missing, Element::k_emptyElement)); }},
        {"orvid, getDefault", [=] { keep(&root->getDefault(missing)); }},
        {"orvid, path get", [=] { keep(&root->get(present)); }}};
    group.bars = {{"orvid", "orvid, path get", 3}, {"orvid, getDefault", "orvid, path get", 3}};
    return group;
}

Group createGroup() {
    const auto root = std::make_shared<Element>();
    const auto reset = [root, empty = treeOf("{}")] { *root = *empty; };
    const auto createAll = [root] {
        for (int i = 0; i < 100; ++i) {
            root->create("section.servers[*].host.name", i);
        }
    };
    const auto overwrite = [root = treeOf(settings(20)), value = Element("gamma.example")] {
        root->create("section7.servers[1].host", value);
    };
    reset();
    createAll();
    if (root->get("section.servers[99].host.name").number().toInt() != 99) {
        throw std::runtime_error("create has not made the elements");
    }
    Group group{"create", "100 new items, three containers deep", {}};
    group.jobs = {{"orvid", createAll, reset}, {"orvid, overwrite 100 times", [overwrite] {
                                                    for (int i = 0; i < 100; ++i) {
                                                        overwrite();
                                                    }
                                                }}};
    group.operations = 100;
    return group;
}

Group findGroup() {
    constexpr std::size_t k_items = 1000;
    std::string text = "[";
    for (std::size_t i = 0; i < k_items; ++i) {
        text += (i == 0 ? "" : ",") + std::string(R"({"id":)") + std::to_string(i) + "}";
    }
    const auto root = treeOf(text + "]");
    const Element sought(static_cast<unsigned int>(k_items - 1));
    const auto handLoop = [root, sought] {
        for (const Element& item : root->array()) {
            const auto member = item.object().find("id");
            if (Element::compare(member->second.data(), sought.data()) == 0) {
                return &item;
            }
        }
        return static_cast<const Element*>(nullptr);
    };
    if (root->find(sought, "id") != handLoop() || handLoop() == nullptr) {
        throw std::runtime_error("find has not found the last item");
    }
    Group group{"find", "the last of 1,000 objects by one member", {}};
    group.jobs = {{"orvid", [root, sought] { keep(root->find(sought, "id")); }},
                  {"orvid, loop by hand", [handLoop] { keep(handLoop()); }}};
    return group;
}

Group pathTextGroup() {
    const auto shallow = treeOf(settings(20));
    const auto deep = treeOf(deepObject(100));
    const Element* const host = &shallow->get("section7.servers[1].host");
    const Element* const innermost = &deep->get(deepPath(100).dotted);
    if (host->path() != "section7.servers[1].host" || innermost->path() != deepPath(100).dotted) {
        throw std::runtime_error("the path text is wrong");
    }
    Group group{"path text of an element", "settings, three steps", {}};
    group.jobs = {{"orvid",
                   [shallow, host] {
                       const std::string text = host->path();
                       keep(&text);
                   }},
                  {"orvid, 100 steps", [deep, innermost] {
                       const std::string text = innermost->path();
                       keep(&text);
                   }}};
    return group;
}

}  // namespace

std::vector<Group> lookupGroups(const std::vector<Document>& documents) {
    std::vector<Group> result;
    for (const Lookup& lookup : lookups(documents)) {
        result.push_back(lookUpGroup(lookup));
    }
    result.push_back(defaultGroup());
    result.push_back(createGroup());
    result.push_back(findGroup());
    result.push_back(pathTextGroup());
    return result;
}

}  // namespace orvid_bench
