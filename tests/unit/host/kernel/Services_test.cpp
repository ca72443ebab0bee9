#include "host/kernel/Services.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <thread>

// A manager of our own answers on the other end of a pair of sockets.

namespace
{
constexpr const char* kService = "/org/freedesktop/systemd1/unit/ssh_2eservice";
const char* startCommand = "secret";

int listUnits(sd_bus_message* question, void*, sd_bus_error*)
{
    sd_bus_message* answer = nullptr;
    sd_bus_message_new_method_return(question, &answer);
    sd_bus_message_open_container(answer, 'a', "(ssssssouso)");
    const struct {
        const char *name, *load;
    } units[] = {
        {"ssh.service", "loaded"}, {"none.service", "not-found"}, {"home.mount", "loaded"}, {"a@b.service", "loaded"}};
    for (const auto& unit : units)
        sd_bus_message_append(answer, "(ssssssouso)", unit.name, "Secure shell", unit.load, "active", "running", "",
                              kService, 0u, "", "/");
    sd_bus_message_close_container(answer);
    const int sent = sd_bus_send(nullptr, answer, nullptr);
    sd_bus_message_unref(answer);
    return sent;
}

int listUnitFiles(sd_bus_message* question, void*, sd_bus_error*)
{
    return sd_bus_reply_method_return(question, "a(ss)", 2, "/lib/systemd/system/ssh.service", "enabled",
                                      "/lib/systemd/system/a@.service", "disabled");
}

int textProperty(sd_bus*, const char*, const char*, const char* name, sd_bus_message* answer, void*, sd_bus_error*)
{
    return sd_bus_message_append(answer, "s", std::string(name) == "Type" ? "notify" : "sshd");
}

int execStart(sd_bus*, const char*, const char*, const char*, sd_bus_message* answer, void*, sd_bus_error*)
{
    return sd_bus_message_append(answer, "a(sasbttttuii)", 1, "/usr/sbin/sshd", 4, "sshd", "-D", "--password",
                                 startCommand, 0, uint64_t{0}, uint64_t{0}, uint64_t{0}, uint64_t{0}, 0u, 0, 0);
}

const sd_bus_vtable kManagerTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("ListUnits", "", "a(ssssssouso)", listUnits, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ListUnitFiles", "", "a(ss)", listUnitFiles, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable kServiceTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Type", "s", textProperty, 0, 0),
    SD_BUS_PROPERTY("User", "s", textProperty, 0, 0),
    SD_BUS_PROPERTY("ExecStart", "a(sasbttttuii)", execStart, 0, 0),
    SD_BUS_VTABLE_END,
};

// Serves until the other end is closed.
void serve(int socket, bool isManager)
{
    sd_bus* bus = nullptr;
    sd_id128_t id{};
    sd_bus_new(&bus);
    sd_bus_set_fd(bus, socket, socket);
    sd_bus_set_server(bus, 1, id);
    sd_bus_set_anonymous(bus, 1);
    if (isManager) {
        sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager",
                                 kManagerTable, nullptr);
        sd_bus_add_object_vtable(bus, nullptr, kService, "org.freedesktop.systemd1.Service", kServiceTable, nullptr);
    }
    sd_bus_start(bus);
    for (int done = 0; done >= 0; done = sd_bus_process(bus, nullptr))
        if (done == 0 && sd_bus_wait(bus, 1'000'000) < 0)
            break;
    sd_bus_unref(bus);
}

nlohmann::json answered(bool isManager)
{
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends), 0);
    std::thread manager(serve, ends[1], isManager);
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    sd_bus_set_fd(bus, ends[0], ends[0]);
    sd_bus_set_anonymous(bus, 1);
    EXPECT_GE(sd_bus_start(bus), 0);
    nlohmann::json services = host::servicesOn(*bus);
    sd_bus_flush_close_unref(bus);
    manager.join();
    return services;
}
} // namespace

TEST(Services, areWhatTheManagerHasLoaded)
{
    const nlohmann::json services = answered(true);
    ASSERT_EQ(services.size(), 2U) << services;
    EXPECT_EQ(services[0], nlohmann::json({{"name", "ssh.service"},
                                           {"description", "Secure shell"},
                                           {"activeState", "active"},
                                           {"subState", "running"},
                                           {"unitFileState", "enabled"},
                                           {"type", "notify"},
                                           {"commandLine", "/usr/sbin/sshd -D --password ***"},
                                           {"user", "sshd"}}));
    EXPECT_EQ(services[1]["name"], "a@b.service");
    EXPECT_EQ(services[1]["unitFileState"], "disabled"); // its template's
}

TEST(Services, hideASecretWithBlanksWhole)
{
    startCommand = "two words";
    EXPECT_EQ(answered(true)[0]["commandLine"], "/usr/sbin/sshd -D --password ***");
    startCommand = "a \"quoted\" one";
    EXPECT_EQ(answered(true)[0]["commandLine"], "/usr/sbin/sshd -D --password ***");
    startCommand = "secret";
}

TEST(Services, ofAManagerThatDoesNotAnswerAreAbsent)
{
    EXPECT_TRUE(answered(false).is_null());
}
