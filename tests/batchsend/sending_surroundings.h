// What videos need around them to be sent over real links, without a window.
#pragma once

#include "base/window_titles.h"
#include "batchsend/chunk_reader.h"
#include "exchange/plain_loop.h"
#include "exchange/switchboard.h"
#include "support/recording_prompts.h"

namespace sontaro::test {

/// A base that outlives whatever sends, and takes leave of link threads as the program does.
struct SendingSurroundings {
    ~SendingSurroundings() { directory.ShutDown(); }

    [[nodiscard]] ExchangeServices Exchange() { return {channel, hub, loop}; }

    static constexpr const char* kMainWindow = "Sending";

    PlainLoop loop;
    WindowDirectory directory{loop};
    RecordingPrompts prompts;
    ThreadGroup threads;
    ExchangeHub hub;
    Switchboard switchboard{kMainWindow, {directory, threads, prompts}, hub};
    WindowDirectory::Registration mainWindow =
        directory.Register(kMainWindow, [this](auto& message) { switchboard.Handle(message); });
    MainWindowChannel channel{directory, kMainWindow};
    ChunkReader source{loop, threads};
};

}  // namespace sontaro::test
