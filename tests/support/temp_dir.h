// Test support: a fresh temporary folder removed at the end of the test, and a scoped
// environment variable, so that no test touches the user's own program folder.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace orvak::test {

class TempDir {
public:
    TempDir() {
        std::random_device rd;
        const auto base = std::filesystem::temp_directory_path();
        for (int attempt = 0; attempt < 100; ++attempt) {
            m_path = base / ("orvak-test-" + std::to_string(rd()));
            if (std::filesystem::create_directory(m_path)) {
                return;
            }
        }
        throw std::runtime_error("cannot create a temporary folder");
    }
    ~TempDir() {
        std::error_code ec;
        // Read-only folders made by a test are made writable again so they can go.
        for (auto it = std::filesystem::recursive_directory_iterator(m_path, ec);
             !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
            std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, ec);
        }
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(m_path, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

/// Sets an environment variable for the life of the object, then restores it.
class ScopedEnv {
public:
    ScopedEnv(std::string name, const std::optional<std::string>& value) : m_name(std::move(name)) {
        if (const char* old = std::getenv(m_name.c_str())) {
            m_old = old;
        }
        if (value) {
            ::setenv(m_name.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(m_name.c_str());
        }
    }
    ~ScopedEnv() {
        if (m_old) {
            ::setenv(m_name.c_str(), m_old->c_str(), 1);
        } else {
            ::unsetenv(m_name.c_str());
        }
    }

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

inline void writeBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string readBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

} // namespace orvak::test
