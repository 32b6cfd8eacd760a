// What every window is given.
#pragma once

#include <filesystem>

#include "base/json_file.h"
#include "base/timers.h"
#include "exchange/exchange_hub.h"
#include "link/link_services.h"

namespace sontaro {

class DocumentKeeper;

/// The services of the running program; all of them outlive every window.
struct UiServices {
    LinkServices link;
    ExchangeHub& hub;
    Timers& timers;
    JsonFile& preferences;                ///< the user's choices and the windows' places
    DocumentKeeper& documents;            ///< what stood on players before it was written over
    std::filesystem::path programFolder;  ///< holds the working files; a demonstration has its own

    [[nodiscard]] WindowDirectory& Directory() const { return link.directory; }
    [[nodiscard]] Prompts& Messages() const { return link.prompts; }
};

}  // namespace sontaro
