// The editor of one command of a timeline.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "base/prompts.h"
#include "timeline/node_checks.h"
#include "timeline/video_fields.h"
#include "widgets/toolkit_quirks.h"

class wxButton;
class wxFlexGridSizer;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace sontaro {

class CommandNames;
class IpField;
class NumberField;

/// Control numbers of the editor, besides OK and Cancel. The address takes four.
inline constexpr int kNodePlayer = 3001;
inline constexpr int kNodeType = 3002;
inline constexpr int kNodeVideo = 3003;
inline constexpr int kNodeHours = 3004;
inline constexpr int kNodeMinutes = 3005;
inline constexpr int kNodeSeconds = 3006;
inline constexpr int kNodeMilliseconds = 3007;
inline constexpr int kNodePort = 3008;
inline constexpr int kNodeIp = 3010;
inline constexpr int kNodePeerPort = 3014;
inline constexpr int kNodeCommand = 3015;
inline constexpr int kNodeText = 3016;
inline constexpr int kNodeChecksum = 3017;
inline constexpr int kAppendChecksum = 3018;
inline constexpr int kCommandByName = 3019;

/// Modal; ends with OK once everything that was entered can be taken. What a node has is shown and
/// kept, offered or not. Enter is OK; Escape does nothing.
class CPlayerTimeAdd : public KeyedDialog {
   public:
    /// `edited` is absent when a node is added. All references outlive the editor.
    CPlayerTimeAdd(wxWindow* parent, Prompts& prompts, VideoOffer& videos, CommandNames& names,
                   const TimeNode* edited);

    /// What was entered, after OK.
    [[nodiscard]] const TimeNode& Node() const { return node_; }

   private:
    void LayOut();
    void AddVideoRows(wxFlexGridSizer& rows);
    void AddPortRows(wxFlexGridSizer& rows);
    void AddCommandRows(wxFlexGridSizer& rows);
    [[nodiscard]] wxSizer* MakeTimeRow();
    [[nodiscard]] wxSizer* MakeCommandRow();
    [[nodiscard]] wxSizer* MakeChecksumRow();
    void BindEvents();
    void ShowEntry(const NodeEntry& entry);
    void ShowPorts(std::int32_t port);
    [[nodiscard]] NodeEntry Entered() const;
    void Take();

    void ChoosePort(std::int32_t port);
    void TakeCommandByName();
    void CommandTyped();
    void TextTyped();
    void AppendChecksum();
    void ShowBytes(const LocalText& trouble);
    [[nodiscard]] std::optional<Bytes> CommandBytes() const;

    Prompts& prompts_;
    CommandNames& names_;
    const std::optional<TimeNode> edited_;
    TimeNode node_;
    std::optional<VideoFields> video_;  // once the font is known
    std::vector<std::int32_t> ports_;
    std::array<NumberField*, 4> time_{};  // hours to milliseconds
    wxChoice* port_ = nullptr;
    IpField* ip_ = nullptr;
    NumberField* peerPort_ = nullptr;
    wxTextCtrl* command_ = nullptr;
    wxTextCtrl* text_ = nullptr;
    wxChoice* checksum_ = nullptr;
    wxButton* append_ = nullptr;
    wxStaticText* bytes_ = nullptr;
    wxString shownCommand_;
};

}  // namespace sontaro
