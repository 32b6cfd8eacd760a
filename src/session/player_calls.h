// What programs without windows ask players.
#pragma once

#include "batchsend/upload_packets.h"
#include "session/block_document.h"
#include "session/session.h"
#include "timeline/time_node.h"
#include "videocontrol/video_control_document.h"
#include "videolist/video_list.h"

namespace sontaro {

// Each call blocks, on the session's thread, for as long as a request of the session may take.

// Settings

/// The exact text of the block as the player holds it, which nobody looks at.
Answered<std::string> ReadBlockText(Session& session, const SettingsBlockKind& kind);
/// The block as the player holds it. A document that is of no use is an answer, too.
Answered<BlockDocument> ReadBlock(Session& session, const SettingsBlockKind& kind);

/// Whether the player starts again with what it was given.
enum class Restart : std::uint8_t { kNo, kYes };

/// Gives the player a document, and waits until it has confirmed it. `restart` counts for a block
/// that may: the player is away afterwards. A text that no packet holds is not sent.
SessionEnd WriteBlock(Session& session, const SettingsBlockKind& kind, std::string_view text,
                      Restart restart = Restart::kNo);

// State

/// Free bytes on the player's disk.
Answered<std::uint64_t> ReadFreeSpace(Session& session);
Answered<PlayerMode> ReadMode(Session& session);
/// The names of the layouts; a locked player refuses.
Answered<std::vector<std::string>> ReadLayouts(Session& session);
Answered<VideoList> ReadVideos(Session& session);

/// What is being played, as the player reports it by itself once a second.
struct NowPlaying {
    std::optional<VideoPosition> position;  ///< with the names of folder and video, if it says them
    std::string usbVideo;                   ///< the one being played from the USB disk
    std::vector<std::string> usbVideos;     ///< those that there are on it
};
/// Has the player report, and waits for that as long as `limit` says, which no report is no failure
/// of. The session's listener hears the reports as well.
Answered<NowPlaying> ReadNowPlaying(Session& session,
                                    std::chrono::milliseconds limit = std::chrono::seconds(3));
/// What a message that nobody has asked for tells of what is being played; false when it does not.
bool TakeReport(const WindowMessage& message, NowPlaying& playing);

// Commands

/// The buttons of the player by their types; asking for them also makes it report its position.
Answered<std::vector<VideoCaption>> ReadCaptions(Session& session);
/// A command of the remote control with the value of its own key, if it has one.
SessionEnd SendVideoCommand(Session& session, VideoCommand command, const std::string& text = {});
/// Has the player send a command to one of its ports at once, as the test of a timeline does. It
/// answers nothing to that: a reply means that it has gone out.
SessionEnd SendCommand(Session& session, const TimeNode& node);

}  // namespace sontaro
