// What the running service manager tells of its services, over the system bus. Nothing is loaded, started or changed by
// the questions.

#include "host/kernel/Services.h"

#include <cerrno>
#include <map>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>
#include <systemd/sd-bus.h>

#include "host/kernel/Questions.h"
#include "host/text/Secrets.h"

namespace host
{
namespace
{
constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kManagerPath = "/org/freedesktop/systemd1";
constexpr const char* kManagerInterface = "org.freedesktop.systemd1.Manager";
constexpr const char* kServiceInterface = "org.freedesktop.systemd1.Service";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr uint64_t kPatience = 2'000'000; // microseconds for one answer
constexpr size_t kMostServices = 4096;
constexpr size_t kMostArguments = 256;
constexpr size_t kMostCommandLine = 4096;

using Bus = std::unique_ptr<sd_bus, decltype(&sd_bus_flush_close_unref)>;
using Message = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

// Calls without arguments, or with two texts; null when there is no answer. Who is not there is not started for it.
Message call(sd_bus& bus, const char* path, const char* interface, const char* method, const char* first = nullptr,
             const char* second = nullptr)
{
    Message none(nullptr, sd_bus_message_unref);
    sd_bus_message* question = nullptr;
    int error = sd_bus_message_new_method_call(&bus, &question, kManager, path, interface, method);
    const Message owner(question, sd_bus_message_unref);
    if (error >= 0)
        error = sd_bus_message_set_auto_start(question, 0);
    if (error >= 0 && first != nullptr)
        error = sd_bus_message_append(question, "ss", first, second);
    sd_bus_message* answer = nullptr;
    if (error >= 0)
        error = sd_bus_call(&bus, question, kPatience, nullptr, &answer);
    errno = error < 0 ? -error : 0;
    return error < 0 ? std::move(none) : Message(answer, sd_bus_message_unref);
}

Message property(sd_bus& bus, const std::string& path, const char* name)
{
    return call(bus, path.c_str(), kProperties, "Get", kServiceInterface, name);
}

std::string textProperty(sd_bus& bus, const std::string& path, const char* name)
{
    const char* text = nullptr;
    const Message answer = property(bus, path, name);
    return answer && sd_bus_message_read(answer.get(), "v", "s", &text) >= 0 ? text : "";
}

// An argument with blanks stands in quotes, as who masks secrets wants it; quotes of its own are apostrophes then.
void appendArgument(std::string& line, std::string argument)
{
    const bool isQuoted = argument.empty() || argument.find_first_of(" \t\n") != std::string::npos;
    if (isQuoted)
        for (char& c : argument)
            c = c == '"' ? '\'' : c;
    line += (line.empty() ? "" : " ") + (isQuoted ? '"' + argument + '"' : argument);
}

// The program and its arguments behind its own name.
std::string readCommand(sd_bus_message* message)
{
    const char* path = nullptr;
    const char* argument = nullptr;
    if (sd_bus_message_read(message, "s", &path) < 0 || sd_bus_message_enter_container(message, 'a', "s") < 0)
        return "";
    std::string line = path;
    for (size_t i = 0; i < kMostArguments && sd_bus_message_read(message, "s", &argument) > 0; ++i)
        if (i > 0)
            appendArgument(line, argument);
    return maskCommandLine(line).substr(0, kMostCommandLine);
}

// The first of the commands that start a service.
std::string commandLine(sd_bus& bus, const std::string& path)
{
    const Message answer = property(bus, path, "ExecStart");
    constexpr const char* kCommands = "a(sasbttttuii)";
    if (!answer || sd_bus_message_enter_container(answer.get(), 'v', kCommands) < 0 ||
        sd_bus_message_enter_container(answer.get(), 'a', "(sasbttttuii)") < 0 ||
        sd_bus_message_enter_container(answer.get(), 'r', "sasbttttuii") <= 0)
        return "";
    return readCommand(answer.get());
}

// State by the name of a unit file.
std::map<std::string, std::string> fileStates(sd_bus& bus)
{
    std::map<std::string, std::string> states;
    const Message answer = call(bus, kManagerPath, kManagerInterface, "ListUnitFiles");
    const char* path = nullptr;
    const char* state = nullptr;
    if (!answer || sd_bus_message_enter_container(answer.get(), 'a', "(ss)") < 0)
        return states;
    while (states.size() < 4 * kMostServices && sd_bus_message_read(answer.get(), "(ss)", &path, &state) > 0) {
        const std::string file = path;
        states.insert_or_assign(file.substr(file.rfind('/') + 1), state);
    }
    return states;
}

// The unit file of an instance is its template's, when it has none of its own.
std::string fileState(const std::map<std::string, std::string>& states, const std::string& name)
{
    const auto own = states.find(name);
    if (own != states.end())
        return own->second;
    const size_t at = name.find('@');
    const size_t dot = name.rfind('.');
    if (at == std::string::npos || dot == std::string::npos || dot < at)
        return "";
    const auto of = states.find(name.substr(0, at + 1) + name.substr(dot));
    return of != states.end() ? of->second : "";
}

// One of the manager's list: name, description, load, active and sub state, whom it follows, path, and the job that
// waits.
struct Unit {
    const char *name, *description, *load, *active, *sub, *follows, *path, *jobType, *jobPath;
    uint32_t job;

    bool read(sd_bus_message* list)
    {
        return sd_bus_message_read(list, "(ssssssouso)", &name, &description, &load, &active, &sub, &follows, &path,
                                   &job, &jobType, &jobPath) > 0;
    }
    // A name that others ask for and nobody has is loaded, too, as "not-found".
    bool isService() const
    {
        return std::string_view(name).ends_with(".service") && std::string_view(load) != "not-found";
    }
};

nlohmann::json serviceOf(sd_bus& bus, const Unit& unit, const std::map<std::string, std::string>& states)
{
    return {{"name", unit.name},
            {"description", unit.description},
            {"activeState", unit.active},
            {"subState", unit.sub},
            {"unitFileState", fileState(states, unit.name)},
            {"type", textProperty(bus, unit.path, "Type")},
            {"commandLine", commandLine(bus, unit.path)},
            {"user", textProperty(bus, unit.path, "User")}};
}
} // namespace

nlohmann::json servicesOn(sd_bus& bus)
{
    const Message list = call(bus, kManagerPath, kManagerInterface, "ListUnits");
    if (!list || sd_bus_message_enter_container(list.get(), 'a', "(ssssssouso)") < 0)
        return nullptr;
    const std::map<std::string, std::string> states = fileStates(bus);
    nlohmann::json services = nlohmann::json::array();
    Unit unit;
    while (services.size() < kMostServices && unit.read(list.get()))
        if (unit.isService())
            services.push_back(serviceOf(bus, unit, states));
    return services;
}

nlohmann::json askServices(const std::string&)
{
    sd_bus* opened = nullptr;
    const int error = sd_bus_open_system(&opened);
    const Bus bus(opened, sd_bus_flush_close_unref);
    if (error >= 0)
        return servicesOn(*bus);
    errno = -error;
    return nullptr;
}
} // namespace host
