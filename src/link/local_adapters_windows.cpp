#include <winsock2.h>  // before windows.h, which declares an older one

#include <iphlpapi.h>
#include <windows.h>

#include "link/local_adapters.h"

namespace sontaro {

namespace {

constexpr const char* kNetworkConnections =
    "SYSTEM\\CurrentControlSet\\Control\\Network\\{4D36E972-E325-11CE-BFC1-08002BE10318}\\";

/// A registry key that is open for reading, or not open.
class RegistryKey {
   public:
    explicit RegistryKey(const std::string& path) {
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    ~RegistryKey() {
        if (key_) RegCloseKey(key_);
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    /// The text of a string value in UTF-8; empty when there is none.
    [[nodiscard]] std::string Text(const wchar_t* name) const {
        wchar_t text[512] = L"";
        DWORD size = sizeof text;
        if (!key_ ||
            RegGetValueW(key_, nullptr, name, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS)
            return "";
        char utf8[2048] = "";
        WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, sizeof utf8, nullptr, nullptr);
        return utf8;
    }

    /// The number of a DWORD value; 0 when there is none.
    [[nodiscard]] std::uint32_t Number(const wchar_t* name) const {
        DWORD number = 0;
        DWORD size = sizeof number;
        if (!key_ || RegGetValueW(key_, nullptr, name, RRF_RT_REG_DWORD, nullptr, &number, &size) !=
                         ERROR_SUCCESS)
            return 0;
        return number;
    }

   private:
    HKEY key_ = nullptr;
};

/// The system's adapter records; empty when it does not give them.
std::vector<std::uint8_t> AdapterRecords() {
    ULONG size = sizeof(IP_ADAPTER_INFO);
    std::vector<std::uint8_t> records(size);
    const auto ask = [&] {
        return GetAdaptersInfo(reinterpret_cast<IP_ADAPTER_INFO*>(records.data()), &size);
    };
    ULONG result = ask();
    if (result == ERROR_BUFFER_OVERFLOW) {
        records.resize(size);
        result = ask();
    }
    if (result != ERROR_SUCCESS) records.clear();
    return records;
}

SystemAdapter Describe(const IP_ADAPTER_INFO& info) {
    const RegistryKey connection(std::string(kNetworkConnections) + info.AdapterName +
                                 "\\Connection");
    SystemAdapter adapter{connection.Text(L"Name"),
                          connection.Text(L"PnpInstanceID"),
                          connection.Number(L"MediaSubType"),
                          {}};
    for (const IP_ADDR_STRING* entry = &info.IpAddressList; entry; entry = entry->Next)
        adapter.addresses.emplace_back(entry->IpAddress.String);
    return adapter;
}

}  // namespace

std::vector<LocalAdapter> LocalAdapterList() {
    const std::vector<std::uint8_t> records = AdapterRecords();
    std::vector<SystemAdapter> adapters;
    if (records.empty()) return {};
    for (const auto* info = reinterpret_cast<const IP_ADAPTER_INFO*>(records.data()); info;
         info = info->Next)
        adapters.push_back(Describe(*info));
    return PhysicalAddresses(adapters);
}

}  // namespace sontaro
