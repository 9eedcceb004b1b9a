// refused: static.assert(ion)? failed.*this type does not convert.*ORVID_NAMES.*fromElement
#include <ko/Orvid.h>

enum class Level { low };

Level read() { return ko::Orvid::parse("1").to<Level>(); }
