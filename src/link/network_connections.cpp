#include "link/network_connections.h"

namespace sontaro {

namespace {

constexpr const char* kNetworkConnections =
    R"(SYSTEM\CurrentControlSet\Control\Network\{4D36E972-E325-11CE-BFC1-08002BE10318}\)";

template <class Type>
Type ValueOr(const RegistryValue& value, Type missing) {
    const Type* found = std::get_if<Type>(&value);
    return found ? *found : missing;
}

}  // namespace

SystemAdapter DescribeConnection(const std::string& guid, std::vector<std::string> addresses,
                                 const RegistryReader& read) {
    const std::string path = kNetworkConnections + guid + "\\Connection";
    return {ValueOr<std::string>(read(path, "Name"), ""),
            ValueOr<std::string>(read(path, "PnpInstanceID"), ""),
            ValueOr<std::uint32_t>(read(path, "MediaSubType"), 0), std::move(addresses)};
}

}  // namespace sontaro
