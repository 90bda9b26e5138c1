#pragma once
// Where the control tool writes: its console (or a file) on Windows, a string in the tests. No
// stream library: the tool stays small.

#include <cstdint>
#include <string>
#include <string_view>

namespace zk::ctl {

class Output {
  public:
    virtual ~Output() = default;
    virtual void Write(std::string_view text) = 0;
};

class StringOutput final : public Output {
  public:
    void Write(std::string_view text) override { text_ += text; }
    [[nodiscard]] const std::string& Text() const { return text_; }
    void Clear() { text_.clear(); }

  private:
    std::string text_;
};

inline Output& operator<<(Output& out, std::string_view text) {
    out.Write(text);
    return out;
}
inline Output& operator<<(Output& out, const std::string& text) {
    out.Write(text);
    return out;
}
inline Output& operator<<(Output& out, const char* text) {
    out.Write(text);
    return out;
}
inline Output& operator<<(Output& out, std::int64_t number) {
    out.Write(std::to_string(number));
    return out;
}
inline Output& operator<<(Output& out, int number) {
    return out << static_cast<std::int64_t>(number);
}

}  // namespace zk::ctl
