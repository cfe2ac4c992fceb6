#pragma once

#include <optional>
#include <string>

enum class SMAppServiceStatus {
    notRegistered = 0,
    enabled = 1,          ///< will be started at login
    requiresApproval = 2, ///< the user has switched it off in the desktop's own settings
    notFound = 3,
};

/// The application's login item, which the desktop keeps. Main thread only.
class SMAppService {
public:
    /// The entry of the running program itself.
    static SMAppService& mainApp();

    SMAppServiceStatus status() const;

    /// Enables the entry. Answers a description of what went wrong, with the entry as it was.
    std::optional<std::string> register_();

    /// Disables the entry; one that is not there is no failure. Answers like `register_`.
    std::optional<std::string> unregister();

    SMAppService(const SMAppService&) = delete;
    SMAppService& operator=(const SMAppService&) = delete;

private:
    SMAppService() = default;
    ~SMAppService() = default;
};
