// Asio's TLS, which the server alone uses, compiled once.
#include <boost/asio/ssl/impl/src.hpp>
