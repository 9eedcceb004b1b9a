// refused: static.assert(ion)? failed.*this type does not convert
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

void write(ko::Orvid::Element& element, Unknown* pointer) { element.set(pointer); }
