#include "link/local_adapters.h"

namespace sontaro {

std::vector<LocalAdapter> PhysicalAddresses(const std::vector<SystemAdapter>& adapters) {
    std::vector<LocalAdapter> rows;
    for (const SystemAdapter& adapter : adapters) {
        if (!adapter.instanceId.starts_with("PCI") && !adapter.instanceId.starts_with("USB"))
            continue;
        for (const std::string& ip : adapter.addresses)
            if (ip != "0.0.0.0" && ip != "127.0.0.1")
                rows.push_back({adapter.name, ip, adapter.mediaSubType});
    }
    return rows;
}

}  // namespace sontaro
