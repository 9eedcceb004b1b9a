// refused: static.assert.* failed.*ORVID_FIELDS names no field: ORVID_FIELDS.Type, a, b.
#include <ko/Orvid.h>

class Server {
    int m_port = 0;
    ORVID_FIELDS(Server);
};
