#pragma once
// The central error handler and the trap that every working procedure of the component
// runs under: an error is explained to the user in Spanish, appended to the error log, and
// the procedure ends, keeping whatever its results held at that moment.
#include <exception>
#include <functional>
#include <string>
#include <utility>

#include "platform/core/error.h"

namespace cp {

// Shows the message for e (by its number; any other number gets the generic box with the
// label, and the offer of a support report until one was accepted), appends e to the log
// file of HandlerLogPath(), and after error 3167 calls the reload hook. When the user accepts
// the offer, sets ReportSent() and sends the support report (common/support_report.h). Keeps
// gModalAbierto True meanwhile. Never throws: failures of its own message, log or report
// steps are dropped.
void ManejarError(const std::string& label, const Error& e);

// While one lives, ManejarError on its thread shows nothing and logs nothing: it only counts
// the errors it was handed. For work the user did not ask for and must not hear about, such
// as the selection window's running count building its condition. Scopes nest.
class QuietErrors {
 public:
  QuietErrors();
  ~QuietErrors();
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
  // The errors handed to ManejarError on this thread since the scope began.
  int Trapped() const { return trapped_; }

 private:
  friend void ManejarError(const std::string& label, const Error& e);
  QuietErrors* outer_;
  int trapped_ = 0;
};

// The error that an exception from outside the component's runtime stands for:
// bad_alloc and length_error 7, out_of_range 9, overflow_error 6, anything else 5.
Error ErrorFromException(const std::exception& e);

// The trap: runs body; a cp::Error or std::exception that escapes it is handed to
// ManejarError with label, and the trap returns false. True when body ran to its end.
// Anything that is not a std::exception passes through.
template <class Body>
bool Atrapar(const std::string& label, Body&& body) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (const Error& e) {
    ManejarError(label, e);
  } catch (const std::exception& e) {
    ManejarError(label, ErrorFromException(e));
  }
  return false;
}

// Called after error 3167 so that the host drops the deleted record from view; the host
// sets it (an empty function, the default, does nothing).
void SetReloadHook(std::function<void()> hook);

// True once the user has agreed to send a report; later errors no longer offer it.
// Starts False; the setter is for the host and for tests.
bool ReportSent();
void setReportSent(bool sent);

}  // namespace cp
