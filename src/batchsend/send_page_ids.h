// Control numbers of the page that sends videos.
#pragma once

namespace sontaro {

inline constexpr int kSendPlayers = 2401;
inline constexpr int kSendStart = 2402;
inline constexpr int kSendLine = 2403;
inline constexpr int kSendStop = 2404;
inline constexpr int kSendContinue = 2405;
inline constexpr int kSendMatrix = 2406;
inline constexpr int kSendPlan = 2407;
inline constexpr int kSendSkipPresent = 2408;
inline constexpr int kSendTryAgain = 2409;
inline constexpr int kSendFailedAgain = 2410;
inline constexpr int kSendProve = 2411;
inline constexpr int kSendExport = 2412;
inline constexpr int kSendProgress = 2413;
inline constexpr int kSendSummary = 2414;
inline constexpr int kSendPace = 2415;
inline constexpr int kSendAmounts = 2416;  ///< of the first of three

}  // namespace sontaro
