// refused: static.assert.* failed.*does not convert.*: bool.*ORVID_NAMES.*ORVID_FIELDS.*fromElement
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

struct Server {
    std::string host;
    std::vector<Unknown*> connections;
};
ORVID_FIELDS(Server, host, connections)

Server copied(const Server& server) { return ko::Orvid::Element::from(server).to<Server>(); }
