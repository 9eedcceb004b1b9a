// refused: static.assert(ion)? failed.*this type does not convert.*ORVID_FIELDS.*fromElement
#include <ko/Orvid.h>

#include <map>

std::map<int, int> read() { return ko::Orvid::parse("{}").to<std::map<int, int>>(); }
