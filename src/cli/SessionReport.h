#pragma once
// The lines one session of a parallel run writes on its standard output for the run that
// started it, one record a line, fields apart by tabs (texts pass through `printable`, so
// they hold no tab or line end):
//   progress  {completed} {total} {countdown} {headline}   while the run works, on each change
//   status    {text}                                       the run's last word
//   app       {name}                                       the menu bar's application name
//   notdark   {name}                                       an application that didn't follow Dark
//   saved     {folder}                                     where the session saved its pictures

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "ui/CaptureProgressModel.h"

namespace zd::cli {

namespace SessionReport {

struct Line {
    std::string kind;
    std::vector<std::string> fields;
};

std::string line(std::string_view kind, const std::vector<std::string>& fields);
// None for an empty line.
std::optional<Line> parse(std::string_view text);

}  // namespace SessionReport

// Writes the progress lines of a session while `showing` holds.
class SessionReporter {
  public:
    SessionReporter(CaptureProgressModel& model, std::ostream& out, std::function<bool()> showing);
    SessionReporter(const SessionReporter&) = delete;
    SessionReporter& operator=(const SessionReporter&) = delete;

  private:
    void update();

    CaptureProgressModel& model_;
    std::ostream& out_;
    std::function<bool()> showing_;
    Subscription subscription_;
    std::string idleStatus_;
    std::string shown_;
};

}  // namespace zd::cli
