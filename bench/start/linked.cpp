// SPDX-License-Identifier: MIT
//
// A program that is linked with the library and does nothing with it but hold one element.

#include <ko/Orvid/Element.h>

int main() {
    const ko::Orvid::Element element;
    return element.isNull() ? 0 : 1;
}
