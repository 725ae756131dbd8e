#pragma once

#include <string>
#include <vector>

namespace zk::test {

/// Records the calls that the code under test makes to OpenGL, in order, as text: "glTranslated(1, 2, 3)".
///
/// The test program defines OpenGL's functions itself (glrecorder.cpp) and passes every call on, so calls of libraries
/// that go through the same symbols (GLU) are recorded, too; those of Qt are not. Questions (glGet…, glIs…) are left
/// out.
class GlRecorder {
  public:
    /// Records the calls to the functions of these names only, or all calls where none is named.
    explicit GlRecorder(std::vector<std::string> only = {});
    ~GlRecorder();
    GlRecorder(const GlRecorder&) = delete;
    GlRecorder& operator=(const GlRecorder&) = delete;

    const std::vector<std::string>& Calls() const { return calls_; }
    void Clear() { calls_.clear(); }

    /// The calls to the functions of these names only.
    std::vector<std::string> CallsTo(std::initializer_list<const char*> names) const;
    int Count(const std::string& name) const;

    static void Record(std::string call);
    /// Whether calls to the function of this name are recorded at present.
    static bool Wants(const char* name);

  private:
    std::vector<std::string> only_;
    std::vector<std::string> calls_;
    GlRecorder* outer_;
};

}  // namespace zk::test
