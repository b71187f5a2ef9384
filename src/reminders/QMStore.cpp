#include "reminders/QMStore.h"

#include "reminders/QMEmailManager.h"

namespace tallyvane {

void QMStore::sendTest(Button& button) {
  button.title = platform_.region.localized("Message Sent");
  button.enabled = false;
  QMEmailManager{platform_}.sendTestMessage();
}

void QMStore::controlTextDidEndEditing() {
  testButton = {platform_.region.localized("Send Test Message"), true};
  savePromptHidden = true;
}

}  // namespace tallyvane
