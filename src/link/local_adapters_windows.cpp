#include <winsock2.h>  // before windows.h, which declares an older one

#include <iphlpapi.h>
#include <windows.h>

#include "link/network_connections.h"

namespace sontaro {

namespace {

std::wstring WideOfAscii(const std::string& text) { return {text.begin(), text.end()}; }

std::string Utf8(const wchar_t* text) {
    char utf8[2048] = "";
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, sizeof utf8, nullptr, nullptr);
    return utf8;
}

RegistryValue ReadLocalMachine(const std::string& path, const std::string& name) {
    union {
        wchar_t text[512];
        DWORD number;
    } value{};
    DWORD type = REG_NONE;
    DWORD size = sizeof value;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, WideOfAscii(path).c_str(), WideOfAscii(name).c_str(),
                     RRF_RT_REG_SZ | RRF_RT_REG_DWORD, &type, &value, &size) != ERROR_SUCCESS)
        return {};
    if (type == REG_DWORD) return static_cast<std::uint32_t>(value.number);
    return Utf8(value.text);
}

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
    std::vector<std::string> addresses;
    for (const IP_ADDR_STRING* entry = &info.IpAddressList; entry; entry = entry->Next)
        addresses.emplace_back(entry->IpAddress.String);
    return DescribeConnection(info.AdapterName, std::move(addresses), ReadLocalMachine);
}

}  // namespace

std::vector<SystemAdapter> SystemAdapters() {
    const std::vector<std::uint8_t> records = AdapterRecords();
    std::vector<SystemAdapter> adapters;
    if (records.empty()) return {};
    for (const auto* info = reinterpret_cast<const IP_ADAPTER_INFO*>(records.data()); info;
         info = info->Next)
        adapters.push_back(Describe(*info));
    return adapters;
}

}  // namespace sontaro
