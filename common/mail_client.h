#pragma once
// The user's mail client, which the support report is handed to: the user sees a new message
// with the report attached, reviews it and sends it. The default is XdgEmailClient; tests and
// hosts with a mail client of their own install another.
#include <chrono>
#include <memory>
#include <string>

#include "platform/core/process_slot.h"

namespace cp {

struct MailMessage {
  std::string address;     // the recipient
  std::string subject;
  std::string body;        // lines end with LF
  std::string attachment;  // a file to attach; empty for none
};

class MailClient {
 public:
  virtual ~MailClient() = default;
  // Opens the message in the user's mail client. True when the client took it; false when
  // there is no client or it reported a failure.
  virtual bool Compose(const MailMessage& message) = 0;
};

// Hands the message to the freedesktop.org tool xdg-email, found on PATH at each call:
//   xdg-email --subject <subject> --body <body> [--attach <file>] <address>
// It runs without a shell (the arguments reach it as they are) with standard input from
// /dev/null, and is waited for at most `wait`: some mail clients keep xdg-email running until
// the message window closes, so a tool still running then is taken as having opened the
// message, and is reaped in the background when it ends. Five seconds is ample for xdg-email
// to fail when no mail client is set up, and short enough that the user is not left waiting.
// False when xdg-email is not on PATH, cannot be started, or exits with a status other than 0.
class XdgEmailClient : public MailClient {
 public:
  explicit XdgEmailClient(std::chrono::milliseconds wait = std::chrono::seconds(5))
      : wait_(wait) {}
  bool Compose(const MailMessage& message) override;

 private:
  std::chrono::milliseconds wait_;
};

// The full path of an executable named name in a folder of PATH; empty when there is none.
std::string FindOnPath(const std::string& name);

// The installed client; never null (an XdgEmailClient until another is installed).
std::shared_ptr<MailClient> CurrentMailClient();
// Installs a client (null puts the XdgEmailClient back) and returns the one it replaces.
std::shared_ptr<MailClient> SetMailClient(std::shared_ptr<MailClient> client);
// The slot behind CurrentMailClient; it may hold null, which stands for the default.
ProcessSlot<std::shared_ptr<MailClient>>& MailClientSlot();

}  // namespace cp
