// warned by Clang: temporary
#include <ko/Orvid.h>

bool isNull() {
    const ko::Orvid::Element& value = ko::Orvid::Path::getElement("[0]", ko::Orvid::parse("[1]"));
    return value.isNull();
}
