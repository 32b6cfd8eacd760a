// What base/ asks of the operating system, on Windows.
#include <shlobj.h>
#include <windows.h>

#include <algorithm>

#include "base/encoding.h"
#include "base/folders.h"
#include "base/local_text.h"
#include "base/program_arguments.h"
#include "base/system_version.h"

namespace sontaro {

namespace {

namespace fs = std::filesystem;

/// One of the user's own folders; the working folder when the system does not name it.
fs::path KnownFolder(const KNOWNFOLDERID& id) {
    PWSTR path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &path);
    fs::path folder = SUCCEEDED(result) ? fs::path(path) : fs::path();
    CoTaskMemFree(path);
    return folder;
}

std::string Utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(std::max(size, 1)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    utf8.pop_back();  // the end of the text
    return utf8;
}

bool HasAttribute(const fs::path& path, DWORD attribute) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

}  // namespace

// Of what looks alike to the system but is another character, nothing is taken.
std::string LegacyCharacter(std::string_view character) {
    constexpr UINT kCodePage = 936;
    wchar_t wide = 0;
    char bytes[2] = "";
    BOOL lacking = FALSE;
    const int units = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, character.data(),
                                          static_cast<int>(character.size()), &wide, 1);
    const int length = WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, &wide, units, bytes,
                                           sizeof bytes, nullptr, &lacking);
    if (units <= 0 || length <= 0 || lacking) return "";
    return {bytes, static_cast<std::size_t>(length)};
}

Language SystemLanguage() { return LanguageOfIdentifier(GetThreadUILanguage()); }

// The documented functions tell a program without a manifest for it that the system is older.
SystemVersion ReadSystemVersion() {
    using Function = void(WINAPI*)(DWORD*, DWORD*, DWORD*);
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    const auto function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(library, "RtlGetNtVersionNumbers")));
    if (!function) return {0, 0, 0, true};
    DWORD major = 0;
    DWORD minor = 0;
    DWORD build = 0;
    function(&major, &minor, &build);
    constexpr DWORD kKindOfBuild = 0xF0000000;
    return {major, minor, build & ~kKindOfBuild, true};
}

std::vector<std::string> ProgramArguments() {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; values && i < count; ++i) arguments.push_back(Utf8(values[i]));
    LocalFree(values);
    return arguments;
}

std::vector<std::string> ProgramArguments(int, char**) { return ProgramArguments(); }

fs::path ExecutableFolder() {
    wchar_t path[32768] = L"";
    GetModuleFileNameW(nullptr, path, 32768);
    return fs::path(path).parent_path();
}

fs::path UserDataFolder() { return KnownFolder(FOLDERID_LocalAppData) / "Sontaro"; }

fs::path ConfigFolder() { return KnownFolder(FOLDERID_RoamingAppData) / "Sontaro"; }

fs::path RuntimeFolder() { return fs::temp_directory_path(); }

bool IsWritableFolder(const fs::path& folder) {
    const fs::path probe = folder / "sontaro-write-test.tmp";
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

// Files of other systems' disks have no such mark.
bool IsHidden(const fs::path& path) {
    return HasAttribute(path, FILE_ATTRIBUTE_HIDDEN) || path.filename().wstring().starts_with(L'.');
}

bool IsLink(const fs::path& path) { return HasAttribute(path, FILE_ATTRIBUTE_REPARSE_POINT); }

}  // namespace sontaro
