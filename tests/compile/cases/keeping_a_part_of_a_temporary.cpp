// warned by Clang: temporary
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

bool isNull() {
    const ko::Orvid::Element& value = ko::Orvid::parse("[1]").get("[0]");
    return value.isNull();
}
