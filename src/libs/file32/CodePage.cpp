#include "libs/file32/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

namespace calder {

namespace {

constexpr char kUnknown = '?';

const char* NameOf(CodePage page) {
  return page == CodePage::Japanese ? "CP932" : "CP1252";
}

bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

// One converter of the C library. A system without it knows the characters of ASCII only, which the callers convert
// themselves.
class Converter {
public:
  Converter(const char* to, const char* from) : handle_(::iconv_open(to, from)) {}
  ~Converter() {
    if (Valid()) ::iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Adds the conversion of exactly these bytes to `out`; false with nothing added when they are no character.
  bool Append(std::string_view character, std::string& out) {
    if (!Valid()) return false;
    std::array<char, 8> result{};
    char* input = const_cast<char*>(character.data()); // the C interface lacks a const; it does not write
    char* output = result.data();
    std::size_t inputLeft = character.size();
    std::size_t outputLeft = result.size();
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (::iconv(handle_, &input, &inputLeft, &output, &outputLeft) != 0 || inputLeft != 0) return false;
    out.append(result.data(), output);
    return true;
  }

private:
  // iconv_open reports failure by an invalid pointer.
  [[nodiscard]] bool Valid() const {
    return handle_ != reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
  }

  iconv_t handle_;
};

// The bytes of the first character: a lead byte and what continues it.
std::size_t CharacterLength(std::string_view utf8) {
  std::size_t length = 1;
  while (length < utf8.size() && length < 4 && IsContinuation(utf8[length])) ++length;
  return length;
}

std::string Encode(std::string_view utf8, CodePage page, std::size_t mostBytes) {
  std::string out;
  Converter converter(NameOf(page), "UTF-8");
  while (!utf8.empty()) {
    const std::size_t length = IsAscii(utf8.front()) ? 1 : CharacterLength(utf8);
    std::string character;
    if (length == 1 && IsAscii(utf8.front()))
      character = utf8.front();
    else if (!converter.Append(utf8.substr(0, length), character))
      character = kUnknown;
    if (out.size() + character.size() > mostBytes) break;
    out += character;
    utf8.remove_prefix(length);
  }
  return out;
}

} // namespace

std::string ToCodePage(std::string_view utf8, CodePage page) {
  return Encode(utf8, page, std::numeric_limits<std::size_t>::max());
}

std::string ToCodePageField(std::string_view utf8, CodePage page, std::size_t width) {
  std::string field = Encode(utf8, page, width);
  field.resize(width, ' ');
  return field;
}

std::string FromCodePage(std::string_view bytes, CodePage page) {
  if (std::ranges::all_of(bytes, IsAscii)) return std::string(bytes);
  std::string out;
  Converter converter("UTF-8", NameOf(page));
  while (!bytes.empty()) {
    // The shortest beginning that is a character: one byte, or in the Japanese page two.
    std::size_t length = 1;
    if (IsAscii(bytes.front()))
      out += bytes.front();
    else if (!converter.Append(bytes.substr(0, 1), out)) {
      if (page == CodePage::Japanese && bytes.size() > 1 && converter.Append(bytes.substr(0, 2), out))
        length = 2;
      else
        out += kUnknown;
    }
    bytes.remove_prefix(length);
  }
  return out;
}

std::string FromCodePageField(std::string_view field, CodePage page) {
  field = field.substr(0, field.find('\0'));
  return FromCodePage(field.substr(0, field.find_last_not_of(' ') + 1), page);
}

} // namespace calder
