// refused: ambiguous
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

bool isNull(ko::Orvid::Element& element) { return element.get(0).isNull(); }
