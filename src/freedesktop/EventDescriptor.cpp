#include "freedesktop/EventDescriptor.h"

#include <sys/eventfd.h>

namespace tallyvane {

EventDescriptor::EventDescriptor() : file_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!file_) throw std::system_error(errno, std::generic_category(), "no event descriptor");
}

void EventDescriptor::raise() const { (void)::eventfd_write(file_.number(), 1); }

void EventDescriptor::acknowledge() const {
  ::eventfd_t count = 0;
  (void)::eventfd_read(file_.number(), &count);
}

}  // namespace tallyvane
