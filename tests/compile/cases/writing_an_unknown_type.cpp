// refused: this type does not convert.*ORVID_FIELDS.*toElement
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

void write(ko::Orvid::Element& element) { element.set(Unknown()); }
