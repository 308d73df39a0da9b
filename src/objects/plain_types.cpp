// Types that are known by name and have no behaviour of their own yet: their objects have a name, signals to
// bind and the methods of every object. Each leaves this page for a source of its own when it is built.

#include "objects/plain_types.h"

namespace footlight {

namespace {

// The signals of every type and some more.
template <std::size_t N>
consteval auto withSignals(const Signal (&own)[N]) {
  return joined(kSignalsOfAll, std::to_array(own));
}

constexpr auto kNetServerSignals = withSignals({
    {"ONNEWPLAYER", "A player has come."},
    {"ONDESTROYPLAYER", "A player has gone."},
    {"ONCOMMAND", "A command has come."},
    {"ONTEXT", "A text has come."},
});
constexpr auto kNetClientSignals = withSignals({
    {"ONCONNECTED", "The connection stands."},
    {"ONCOMMAND", "A command has come."},
    {"ONCONNECTIONCLOSED", "The connection was lost."},
});

}  // namespace

extern constinit const ScriptType kNetPeerType = {
    .number = type::kNetPeer,
    .idWord = "NETPEER",
    .stringWord = "NETPEER",
    .meaning = "One side of a connection.",
    .isCallable = false,
    .signals = kSignalsOfAll,
};

extern constinit const ScriptType kNetServerType = {
    .number = type::kNetServer,
    .idWord = "NETSERVER",
    .meaning = "The side that other players connect to.",
    .signals = kNetServerSignals,
};

extern constinit const ScriptType kNetClientType = {
    .number = type::kNetClient,
    .idWord = "NETCLIENT",
    .meaning = "The side that connects to a server.",
    .signals = kNetClientSignals,
};

extern constinit const ScriptType kFilterType = {
    .number = 2014,
    .idWord = "FILTER",
    .stringWord = "FILTER",
    .definitionWord = "FILTER",
    .meaning = "Changes what is drawn.",
    .pass = 6,
    .signals = kSignalsOfAll,
};

extern constinit const ScriptType kStaticFilterType = {
    .number = 2015,
    .idWord = "STATICFILTER",
    .definitionWord = "STATICFILTER",
    .meaning = "Changes a picture once.",
    .pass = 6,
    .signals = kSignalsOfAll,
};

extern constinit const ScriptType kMovieType = {
    .number = 2024,
    .definitionWord = "MOVIE",
    .meaning = "A film.",
    .pass = 6,
    .signals = kSignalsOfAll,
};

// Words of types that no game makes.

extern constinit const ScriptType kColouringType = {
    .number = 10002,
    .idWord = "KOLOROWANKA",
    .meaning = "A picture to paint.",
    .isCallable = false,
};

extern constinit const ScriptType kMatrixType = {
    .number = 10003,
    .idWord = "MATRIX",
    .meaning = "A board of cells.",
    .isCallable = false,
};

extern constinit const ScriptType kSwfType = {
    .number = 10060,
    .idWord = "SWF",
    .meaning = "A film.",
    .isCallable = false,
};

}  // namespace footlight
