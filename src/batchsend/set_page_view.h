// What the parameter page's procedure asks of its window, and what it stands on.
#pragma once

#include <filesystem>

#include "base/json_file.h"
#include "base/prompts.h"
#include "base/thread_group.h"
#include "base/ui_thread.h"
#include "batchsend/video_set.h"
#include "batchsend/video_source.h"
#include "exchange/conversation.h"

namespace sontaro {

class SetPageView {
   public:
    virtual ~SetPageView() = default;
    /// Other players or videos are shown, or others first: shows all of it anew.
    virtual void SetChanged() = 0;
    /// Something else is told of them, all of which stay where they are.
    virtual void VideosChanged() = 0;
    /// Categories have gone to other slots, and so does what is chosen. `SetChanged` comes next.
    virtual void CategoriesSettled(const std::vector<SettledName>& settled) = 0;
    /// What is known of the player at that place has changed; names of categories, too.
    virtual void PlayerChanged(std::size_t player) = 0;
    /// Has that video of those shown looked at: something is wrong with it.
    virtual void ChooseVideo(std::uint32_t id) = 0;
};

/// All of it outlives the procedure.
struct SetPageServices {
    VideoSource& source;
    UiThread& thread;
    ThreadGroup& threads;
    Prompts& prompts;
    JsonFile& preferences;
    ExchangeServices exchange;
    std::filesystem::path videoTypeFile;
};

}  // namespace sontaro
