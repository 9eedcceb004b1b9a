// refused: static.assert.* failed.*ORVID_FIELDS names no field: ORVID_FIELDS.Type, a, b.
#include <ko/Orvid.h>

struct Server {
    int port = 0;
};
ORVID_FIELDS(Server)

Server copied(const Server& server) { return ko::Orvid::Element::from(server).to<Server>(); }
