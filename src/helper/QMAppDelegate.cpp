#include "helper/QMAppDelegate.h"

#include <string>

namespace tallyvane {

void QMAppDelegate::showTallyvane() {
  bool found = false;
  for (const std::string& identifier : workspace_.runningApplications()) {
    if (identifier == "com.Quillmoor.Tallyvane") found = true;
  }
  // Fire and forget: this program ends whether or not the URL could be opened, and the workspace logs why not.
  if (!found) (void)workspace_.openUrl("com-quillmoor-tallyvanelaunch:///");
  application_.terminate();
}

}  // namespace tallyvane
