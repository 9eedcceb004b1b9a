// warned by Clang: temporary
#include <ko/Orvid.h>

bool isNull() {
    const ko::Orvid::Element* value = ko::Orvid::JsonPointer("/0").find(ko::Orvid::parse("[1]"));
    return value->isNull();
}
