// warned by Clang: temporary
#include <ko/Orvid.h>

bool isNull() {
    const ko::Orvid::Element* value = ko::Orvid::JsonPath("$[0]").first(ko::Orvid::parse("[1]"));
    return value->isNull();
}
