// What every window is given.
#pragma once

#include "base/json_file.h"
#include "link/link_services.h"

namespace sontaro {

/// The services of the running program; all of them outlive every window.
struct UiServices {
    LinkServices link;
    JsonFile& preferences;  ///< the user's choices and the windows' places

    [[nodiscard]] WindowDirectory& Directory() const { return link.directory; }
    [[nodiscard]] Prompts& Messages() const { return link.prompts; }
};

}  // namespace sontaro
