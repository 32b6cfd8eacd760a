// The packets with which videos go to a player, and what is known of its answers.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "exchange/request.h"

namespace sontaro {

/// Most bytes of a video in one packet. A shorter chunk, which may be empty, is a video's last one.
inline constexpr std::size_t kVideoChunkSize = 8'192'000;
/// Most chunks that the number of a chunk can count.
inline constexpr std::uint64_t kMostVideoChunks = 65'535;
/// Most bytes of a video that can be sent.
inline constexpr std::uint64_t kLongestVideo = kMostVideoChunks * kVideoChunkSize;
/// Most bytes of a video's name (UTF-8), as file systems have them.
inline constexpr std::size_t kLongestVideoName = 255;

/// In the qualifier of a packet of command 20, and of what acknowledges it where the player says.
enum class UploadStep : std::uint8_t { kAnnouncement = 0, kChunk = 1, kLastChunk = 2 };

/// Room for a packet with a chunk, which is read right behind its header. Never grows beyond the
/// longest chunk.
using ChunkBuffer = std::shared_ptr<Bytes>;

/// Tells a player that a video of `size` bytes comes. Its name is at most `kLongestVideoName` long;
/// only what is behind the last "\\" or "/" is sent.
[[nodiscard]] SharedPacket VideoAnnouncement(std::string_view name, std::uint64_t size,
                                             std::uint16_t code);

/// The number of the chunk with which `sent` bytes of a video have been sent: 8,192,000 bytes each,
/// rounded up, at least 1. The empty last chunk repeats the number of the one before it.
[[nodiscard]] std::uint16_t ChunkNumber(std::uint64_t sent);

/// Writes the header before the bytes of a chunk.
[[nodiscard]] SharedPacket VideoChunk(ChunkBuffer buffer, std::uint16_t number, std::uint16_t code,
                                      UploadStep step);

/// The document of the video categories, of at most `kLongestPayload` bytes.
[[nodiscard]] SharedPacket VideoTypePacket(std::string_view document);

/// Whether a message acknowledges a packet of command 20: one with a sub-command does not.
[[nodiscard]] bool IsAcknowledgement(const WindowMessage& message);
/// The qualifier that it came with.
[[nodiscard]] std::uint8_t QualifierOf(const WindowMessage& message);
/// Whether the player answers that it has the document of the video categories; a refusal when it
/// says that it will not keep it.
[[nodiscard]] Verdict JudgeVideoTypes(const WindowMessage& message);

/// Free bytes on a player's disk; none when the message is no such answer. `part` is the half of
/// the player's data: 1 has it in a batch, 0 wherever it is asked in passing.
[[nodiscard]] std::optional<std::uint64_t> FreeSpaceIn(const WindowMessage& message,
                                                       std::uint16_t part);

/// How a player plays together with others (command 36).
enum class PlayerMode : std::uint16_t { kIndependent = 0, kMaster = 1, kSlave = 2 };
/// None when the message is no such answer. A number that nobody knows is an independent player's.
[[nodiscard]] std::optional<PlayerMode> ModeIn(const WindowMessage& message);
/// Asks for the mode.
[[nodiscard]] Request AskPlayerMode();

}  // namespace sontaro
