// The X-Plane interface test console without its window.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"
#include "simlink/console/DatagramLog.h"
#include "simlink/console/LinkConsoleTexts.h"

namespace tvx {

// Every argument that is text comes as the user typed it; what is wrong with it is shown, and no
// packet is sent.
class LinkConsolePresenter {
 public:
  struct View {
    std::string Status = "Stopped";     // of the receive display: "Running" or "Stopped"
    std::string LogStatus = "Stopped";  // "Active" or "Stopped"
    std::string LogCaption = "Start Logging";
    bool Silent = false;  // the display runs, and nothing has arrived for some seconds
    std::string Arrived;  // how many datagrams arrived since the display was started, in words
    std::string Raw;      // the datagram that arrived last
    std::string Note;     // what the last command did, in words
  };

  LinkConsolePresenter(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock);
  ~LinkConsolePresenter() { Close(); }
  LinkConsolePresenter(const LinkConsolePresenter&) = delete;
  LinkConsolePresenter& operator=(const LinkConsolePresenter&) = delete;

  const View& Shown() const { return view_; }
  const LogLines& Log() const { return log_; }
  // Where the console's link leads from the next command on; at first where the configuration says.
  SimCom::Endpoint Endpoint;
  bool ReverseByteOrder;  // of the values shown; identifiers and indices never are

  // --- receive display ---
  void cmdStartUDP_Click();  // decoding into the ports rests until it is stopped
  void CmdStopUDP_Click();
  // Takes over what has arrived. True when the view or the log changed.
  bool DisplayTimer_Tick();
  void cmdClearRaw_Click() { view_.Raw.clear(); }
  void cmdClearConverted_Click() { log_.Clear(); }

  // --- log ---
  void cmdSingleLog_Click() { LogNext(1); }                  // the next datagram
  void cmdMultiFrame_Click(int frames) { LogNext(frames); }  // so many datagrams, 1..1000
  void cmdStopLog_Click();                                   // starts or stops the log without an end
  bool cmdSaveLog_Click(const std::string& path);            // false, with a message, where it cannot

  // --- senders ---
  void cmdDSEL_Click(std::string_view index);
  void cmdUSEL_Click(std::string_view index);
  void cmdUSELall_Click();  // groups 0..135, while the receive display runs too
  void cmdStopAll_Click() { cmdUSELall_Click(); }
  void cmdDataUdp_Click(std::string_view index, std::string_view valueNumber, std::string_view value);
  void cmdSendDataInteger_Click(std::string_view index, std::string_view valueNumber, std::string_view value);
  void cmdSendCharacter_Click(std::string_view character);  // one character of ASCII
  void cmdSendDREF_Click(std::string_view path, std::string_view value);

  // --- subscriptions; those made here are not recorded by the link ---
  void cmdSelectRREF_Click(std::string_view path, std::string_view identifier, std::string_view frequency);
  void cmdDeleteRREF_Click(std::string_view path, std::string_view identifier);
  void CmdClearAllRREFs_Click();
  // The recorded subscriptions, then the console's own, one a line.
  std::vector<std::string> cmdShowRREF_Click() const;

  void cmdHelp_Click() { boxes_.Show(ConsoleHelp()); }

  // Makes a path the dataref of a configurable Function's sequence number 1; asks before it replaces a
  // description. A Function that is not defined becomes one that reads it 10 times a second.
  bool cmdCopyToFunction_Click(std::string_view functionNr, std::string_view path);

  // Stops the display, cancels the groups and subscriptions asked for here, and leaves the link as it was.
  // May be called again.
  void Close();

 private:
  struct Subscription {
    std::string path;
    std::int32_t frequency = 0;
    float value = 0;  // as received last
  };
  void LogNext(int frames);
  void StopLog();
  void OnDatagram(ByteView bytes, std::int32_t port);
  bool ShowArrivals();
  void CancelAll();
  void KeepValues(const LoggedDatagram& datagram);
  bool OpenLink();
  bool Refuse(std::string_view message);
  bool IsPath(std::string_view path);  // false, with a note, when it is none
  // Checks the words that both DATA senders share, and opens the link.
  bool ReadGroupValue(std::string_view index, std::string_view valueNumber, int& group, int& number);
  void Note(std::string words) { view_.Note = std::move(words); }

  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  Registration monitor_;
  View view_;
  LogLines log_;
  std::vector<LoggedDatagram> arrived_;  // since the last tick
  std::size_t missed_ = 0;               // arrived since the last tick and not kept
  std::int64_t count_ = 0;               // datagrams since the display was started
  std::int64_t lastCameMs_ = 0;          // when the last one came, or the display was started
  int framesLeft_ = 0;                   // to log; 0: the log rests, below 0: until it is stopped
  std::map<std::int32_t, Subscription> subscriptions_;  // the console's own, by identifier
  std::set<int> groups_;                                // asked for here
  bool linkWasOpen_;
  bool touchedLink_ = false;
};

}  // namespace tvx
