#pragma once

#include <nlohmann/json_fwd.hpp>

struct sd_bus;

namespace host
{
/// The services that the manager on a bus has loaded, as Questions.h says; null, with errno, when it does not answer.
/// The bus stays the caller's.
nlohmann::json servicesOn(sd_bus& bus);
} // namespace host
