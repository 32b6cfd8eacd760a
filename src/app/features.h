// The features of the program, one row each.
#pragma once

#include <optional>
#include <span>

#include "base/local_text.h"
#include "base/window_titles.h"
#include "devices/scan_panel.h"
#include "widgets/ui_services.h"

class wxWindow;

namespace sontaro {

enum class FeatureGroup { kPlayback, kPicture, kControl };

/// Runs the dialog of a feature for one player, modally.
using FeatureOpener = void (*)(wxWindow* parent, const UiServices& services,
                               const DeviceRecord& player);

/// Runs a wizard that finds its players itself, modally.
using WizardOpener = void (*)(wxWindow* parent, const UiServices& services, const ScanSetup& setup);

struct Feature {
    int button = 0;             ///< control number
    LocalText text = {"", ""};  ///< of the button; without an English form: not in that layout
    FeatureGroup group{};
    const char* icon = "";
    char key = ' ';                ///< mnemonic of the English text
    std::optional<Window> window;  ///< what it opens, where others find that by its title
    FeatureOpener open = nullptr;
    WizardOpener openWizard = nullptr;  ///< in place of it

    [[nodiscard]] bool IsInLayout() const {
        return CurrentLanguage() == Language::kChinese || text.english != nullptr;
    }
};

/// All of them, in the order of their buttons within a group.
[[nodiscard]] std::span<const Feature> Features();

/// The control number of the button that opens `window`, which is a feature's.
[[nodiscard]] int FeatureButton(Window window);

struct FeatureGroupText {
    FeatureGroup group;
    LocalText text;
};

inline constexpr FeatureGroupText kFeatureGroups[] = {
    {FeatureGroup::kPlayback, {"视频播放", "Playback"}},
    {FeatureGroup::kPicture, {"画面", "Picture"}},
    {FeatureGroup::kControl, {"协议与接口", "Protocols and ports"}},
};

}  // namespace sontaro
