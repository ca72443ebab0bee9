#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

// How the live kernel is asked, one function a question, each in the file of its subject. Each returns null when there
// is no answer. Kernel.cpp takes the answers apart.

namespace host
{
// System.cpp
nlohmann::json askClock(const std::string&);
nlohmann::json askUserId(const std::string&);
nlohmann::json askPageSize(const std::string&);
nlohmann::json askNames(const std::string&);

// Netlink.cpp
nlohmann::json askLinks(const std::string&);
nlohmann::json askAddresses(const std::string&);
nlohmann::json askRoutes(const std::string&);

nlohmann::json askLinkDriver(const std::string& link);           // LinkDriver.cpp
nlohmann::json askFileSystemSize(const std::string& mountPoint); // FileSystem.cpp
nlohmann::json askBirthTime(const std::string& path);            // FileSystem.cpp
nlohmann::json askModificationTime(const std::string& path);     // FileSystem.cpp
nlohmann::json askBlockContent(const std::string& device);       // BlockContent.cpp
nlohmann::json askServices(const std::string&);                  // Services.cpp
nlohmann::json askNvmeHealth(const std::string& node);           // NvmeHealth.cpp
nlohmann::json askKeyboardRepeat(const std::string& node);       // KeyboardRepeat.cpp
nlohmann::json askCpuid(const std::string& leaf);                // Cpuid.cpp
} // namespace host
