// warned by Clang: temporary
#include <ko/Orvid.h>

bool isNull() {
    const ko::Orvid::Element& root = *ko::Orvid::Dom::parse("[1]");
    return root.isNull();
}
