// SPDX-License-Identifier: MIT
//
// The program of docs/tutorial.md: keeps a list of services in a file that people write, too. The
// arguments are the file, of which it makes a copy, and a folder for the copy.

#include <ko/Orvid.h>

#include <iostream>
#include <optional>
#include <string>
#include <vector>

using namespace ko::Orvid;

enum class Level { debug, info, error };
ORVID_NAMES(Level, {{Level::debug, "debug"}, {Level::info, "info"}, {Level::error, "error"}})

struct Service {
    std::string name;
    int port;
    int replicas;
    Level level;
    ko::DecNumber price = ko::DecNumber(0);
    std::optional<std::string> owner;
};
ORVID_FIELDS(Service, name, port, replicas, level, price, owner)

namespace {

using Services = std::vector<Service>;

void firstSteps() {
    Element service = parse(R"({"name": "billing", "port": 9000, "price": 0.10})");
    std::cout << service.get("name").to<std::string>() << " at " << service.get("port").to<int>()
              << ", owner: " << service.toOr("owner", "nobody") << "\n";
    service.get("port").set(9001);
    service.create("tags", makeArray({"money", "daily"}));
    std::cout << serialize(service) << "\n";
}

void list(const Services& services) {
    for (const Service& service : services) {
        std::cout << service.name << ": port " << service.port << ", " << service.replicas
                  << " replicas, owner " << service.owner.value_or("nobody") << "\n";
    }
}

ko::DecNumber priceOfAll(const Services& services) {
    ko::DecNumber sum(0);
    for (const Service& service : services) {
        sum = sum + service.price * ko::DecNumber(service.replicas);
    }
    return sum;
}

/// Returns whether there is a service of that name.
bool scale(Dom& dom, const std::string& name, int replicas) {
    Element* const service = dom->get("services").find(name, "name");
    if (service == nullptr) {
        return false;
    }
    service->create("replicas", replicas);
    return true;
}

void add(Dom& dom, const Service& service) { dom->create("services[*]", Element::from(service)); }

void loadAndList(const std::string& file) {
    const Dom dom = Dom::load(file);
    const auto services = dom->get("services").to<Services>();
    list(services);
    std::cout << "all together " << priceOfAll(services) << " an hour\n";
    std::cout << explainDefault(*dom, "services[0].replicas").text() << "\n";
}

void edit(const std::string& file) {
    Dom dom = Dom::load(file);
    scale(dom, "billing", 3);
    add(dom, {"news", 8090, 1, Level::error, ko::DecNumber("0.05"), std::nullopt});
    dom.save(file);
    std::cout << readFile(file);
}

/// Paths of files differ from machine to machine; their last part does not.
std::string withoutFolder(const std::string& text) { return text.substr(text.rfind('/') + 1); }

void showErrorOfValue(const std::string& file) {
    Dom dom = Dom::parse(R"({ "services": [
  { "name": "mail", "port": "smtp", "replicas": 1 } ] })");
    try {
        dom->get("services").to<Services>();
    } catch (const Exception& error) {
        std::cout << describe(error, dom) << "\n";
    }
    try {
        dom = Dom::load(file);
        scale(dom, "mail", 1);
        dom->get("services[7].port");
    } catch (const Exception& error) {
        std::cout << withoutFolder(describe(error, dom)) << "\n";
    }
}

void showErrorOfText() {
    const std::string text = R"({"name": "mail", "port": 25, "replicas": 01})";
    try {
        parse(text);
    } catch (const ParseException& error) {
        std::cout << describe(error) << "\n" << sourceExcerpt(text, error);
    }
}

}  // namespace

int main(int, char** arguments) {
    const std::string file = std::string(arguments[2]) + "/services.jsonc";
    replaceFile(file, readFile(arguments[1]));
    firstSteps();
    std::cout << "\n";
    loadAndList(file);
    std::cout << "\n";
    edit(file);
    std::cout << "\n";
    showErrorOfValue(file);
    showErrorOfText();
}
