// Listens to what programs tell screen readers, so that they tell it; says "ready" and waits for
// its end.
#include <gio/gio.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Ends the program when a call has failed.
template <class Result>
Result* Checked(Result* result, const GError* error) {
    if (result != nullptr) return result;
    std::fprintf(stderr, "%s\n", error->message);
    std::_Exit(1);
}

GVariant* Call(GDBusConnection* bus, const char* service, const char* path, const char* method,
               GVariant* arguments) {
    GError* error = nullptr;
    return Checked(
        g_dbus_connection_call_sync(bus, service, path, service, method, arguments, nullptr,
                                    G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error),
        error);
}

}  // namespace

int main() {
    GError* error = nullptr;
    GDBusConnection* session = Checked(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error), error);
    const char* address = nullptr;
    g_variant_get(Call(session, "org.a11y.Bus", "/org/a11y/bus", "GetAddress", nullptr), "(&s)",
                  &address);
    const int flags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                      G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
    GDBusConnection* bus =
        Checked(g_dbus_connection_new_for_address_sync(
                    address, static_cast<GDBusConnectionFlags>(flags), nullptr, nullptr, &error),
                error);
    Call(bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "RegisterEvent",
         g_variant_new("(sass)", "object:", nullptr, ""));
    std::puts("ready");
    std::fflush(stdout);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
