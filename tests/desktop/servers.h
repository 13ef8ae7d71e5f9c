#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

namespace tessarel::host {

/// Sets a variable of the environment and brings the old value back.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::string& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    bool wasSet_;
    std::string old_;
};

/// A program that runs until the end of the test.
class Child {
public:
    /// The child's standard output goes to `outputFile`, or nowhere.
    explicit Child(const std::vector<std::string>& command, const std::string& outputFile = "/dev/null");
    ~Child() { stop(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void stop();

private:
    pid_t pid_;
};

/// A folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

}  // namespace tessarel::host
