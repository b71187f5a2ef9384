// Prints the name of each active bill and when it is due. Reads the user's own data and writes nothing.
#include <iostream>

#include "common/DesktopPlatform.h"
#include "freedesktop/NoServices.h"
#include "freedesktop/SystemClock.h"
#include "freedesktop/SystemLog.h"
#include "freedesktop/SystemRegion.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

using namespace tallyvane;

/// This program opens nothing in the session.
class NoWorkspace : public Workspace {
 public:
  std::vector<std::string> runningApplications() override { return {}; }
  Result<> openUrl(const std::string& url) override { return Error{url + ": not opened by this program"}; }
};

int main() {
  SystemLog log("due-soon", false);
  SystemClock clock;
  NoWorkspace workspace;
  NoStatusBar statusBar;
  NoApplication application;
  programs::DesktopPlatform desktop(XdgFolders::of(processEnvironment()), systemRegion(log), clock, log, workspace,
                                    statusBar, application);
  QMBillsLoader loader(desktop.platform());
  const auto bids = loader.getListOfBills(key::ActiveBills);
  if (!bids) {
    std::cerr << "There are no bills yet.\n";
    return 1;
  }
  for (const std::string& bid : *bids) {
    if (const auto bill = loader.loadBillWithID(bid)) {
      std::cout << bill->valueOr(key::Name, std::string()) << ": " << bill->valueOr(key::HumanDueDate, std::string())
                << "\n";
    }
  }
}
