/// In-memory implementations of the platform interfaces, for tests and for
/// hosts without a user interface: a message box that records what it was
/// asked to show, a help viewer that records its requests, a fixed number
/// locale and suite services over a set of named files. (The settings store
/// and INI files have their own units.) @file
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "zelkora/platform/ini_history.h"
#include "zelkora/platform/platform.h"

namespace zelkora::platform::headless {
/// A message box that records what it was asked to show.
class RecordingMessageBox : public MessageBox {
 public:  /// One message: its text and title.
  struct Shown {
    Text text;   ///< The text.
    Text title;  ///< The title.
  };
  void warning(TextView text, TextView title) override {
    shown.push_back({Text(text), Text(title)});
  }
  void diagnostic(std::string_view message) override { diagnostics.emplace_back(message); }
  /// Recorded in `asked`; answered with `answer`.
  int32_t question(TextView text, TextView title) override {
    asked.push_back({Text(text), Text(title)});
    return answer;
  }

  std::vector<Shown> shown;              ///< The warnings shown, in order.
  std::vector<Shown> asked;              ///< The questions asked, in order.
  int32_t answer = kYes;                 ///< The answer to every question.
  std::vector<std::string> diagnostics;  ///< The diagnostics, in order.
};

/// Records the help it was asked to show; shows it when `available`.
class RecordingHelpViewer : public HelpViewer {
 public:  /// One request: the file and the topic.
  struct Request {
    Text file;   ///< The help file.
    Text topic;  ///< The topic.
  };
  bool show(TextView file, TextView topic) override {
    requests.push_back({Text(file), Text(topic)});
    return available;
  }

  std::vector<Request> requests;  ///< The requests, in order.
  bool available = true;          ///< Whether show() answers true.
};
/// Number conventions fixed when the object is made.
class FixedNumberLocale : public NumberLocale {
 public:  /// The decimal and grouping symbols ("" for none).
  FixedNumberLocale(Text decimal = u".", Text grouping = u",")
      : decimal_(std::move(decimal)), grouping_(std::move(grouping)) {}
  Text decimal_symbol() const override { return decimal_; }
  Text grouping_symbol() const override { return grouping_; }

 private:
  Text decimal_;
  Text grouping_;
};

/// Suite services over a set of named files; the history in the INI files
/// given (the bundle's own in Platform::headless), compared exactly; the
/// other per-user files in the same INI files, known by their names.
class MemorySuiteServices : public SuiteServices {
 public:  /// Over the history file of `ini` (none when null).
  explicit MemorySuiteServices(std::shared_ptr<IniFiles> ini = nullptr);
  bool file_exists(TextView path) const override { return files.count(Text(path)) > 0; }
  Text extension(TextView file_name) const override;
  Text full_path(TextView suite_file_name) const override;
  std::vector<Text> history(TextView program) const override { return history_.files(program); }
  bool add_history(TextView program, TextView entry) override {
    return history_.add(program, entry);
  }  ///< Puts `entry` at the top of the history of `program`.
  /// The file's name itself, in the same INI files as the history.
  Text user_file(TextView suite_file_name) override { return Text(suite_file_name); }

  std::set<Text> files;              ///< paths that exist
  std::map<Text, Text> suite_files;  ///< suite file name -> full path

 private:
  IniHistory history_;
};

}  // namespace zelkora::platform::headless
