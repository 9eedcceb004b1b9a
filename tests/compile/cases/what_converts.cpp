// accepted
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

int main() {
    const auto values = ko::Orvid::parse("[1]").to<std::vector<std::string>>();
    return ko::Orvid::Element::from(values).get(std::string("a")).isNull() ? 1 : 0;
}
