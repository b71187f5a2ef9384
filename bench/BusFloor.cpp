// The least that a program needs to ask the session bus what runs.
#include <systemd/sd-bus.h>

int main() {
  sd_bus* bus = nullptr;
  sd_bus_message* answer = nullptr;
  const bool asked =
      sd_bus_open_user(&bus) >= 0 && sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                        "org.freedesktop.DBus", "ListNames", nullptr, &answer, "") >= 0;
  sd_bus_message_unref(answer);
  sd_bus_flush_close_unref(bus);
  return asked ? 0 : 1;
}
