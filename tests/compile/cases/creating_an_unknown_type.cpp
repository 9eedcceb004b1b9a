// refused: static.assert.* failed.*does not convert.*: bool.*ORVID_NAMES.*ORVID_FIELDS.*fromElement
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

void create(ko::Orvid::Element& element) { element.create("key", Unknown()); }
