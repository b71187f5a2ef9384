#pragma once

#include <string>

#include "platform/Platform.h"

namespace tallyvane {

/// The settings pane of reminders by mail: a field for the address, a button for a test, a prompt to save.
class QMStore {
 public:
  struct Button {
    std::string title;
    bool enabled = true;
  };

  explicit QMStore(const Platform& platform) : platform_(platform) {}

  Button testButton;
  bool savePromptHidden = true;

  /// Sends a test message to the address that is set. The button shows that, and cannot be pressed again for now.
  void sendTest(Button& button);
  /// The address field lost the focus.
  void controlTextDidEndEditing();
  /// The address is being typed.
  void controlTextDidChange() { savePromptHidden = false; }

 private:
  const Platform& platform_;
};

}  // namespace tallyvane
