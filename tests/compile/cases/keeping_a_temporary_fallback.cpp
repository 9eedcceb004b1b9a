// warned by Clang: temporary
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

bool isNull(const ko::Orvid::Element& element) {
    const ko::Orvid::Element& value = element.tryGet("nope", "text");
    return value.isNull();
}
