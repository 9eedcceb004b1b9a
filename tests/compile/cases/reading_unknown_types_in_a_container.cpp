// refused: this type does not convert.*ORVID_FIELDS.*fromElement
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

std::vector<Unknown> read() { return ko::Orvid::parse("1").to<std::vector<Unknown>>(); }
