#pragma once

#include <memory>

#include "platform/Application.h"
#include "platform/Workspace.h"

namespace tallyvane {

class QMHelperMenulet;

/// The login helper's delegate: sees that the main application runs, then ends. Takes just the two ports that it uses,
/// so that the helper loads nothing else at login.
class QMAppDelegate {
 public:
  QMAppDelegate(Workspace& workspace, Application& application) : workspace_(workspace), application_(application) {}

  void applicationDidFinishLaunching() { showTallyvane(); }
  /// Opens the launch URL unless the main application is running; ends this program in every case. The menu's command
  /// is this same operation, so choosing it inside the helper ends the helper; deliberate.
  void showTallyvane();

  /// Never set by the helper itself.
  std::shared_ptr<QMHelperMenulet> theMenulet;

 private:
  Workspace& workspace_;
  Application& application_;
};

}  // namespace tallyvane
