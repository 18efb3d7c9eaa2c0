#include "model/filter.h"

#include "model/password.h"

namespace zarvo {
namespace {

char DrawKey(const std::function<int()>& draw) {
  return static_cast<char>(static_cast<unsigned char>(draw() / 32767.0 * 255));
}

}  // namespace

bool Filter::CheckPassword(std::string_view candidate) const {
  if (PasswordKey.empty()) return true;
  return EqualUpToZero(ScramblePassword(candidate, PasswordKey.front(), FormatVersion), Password);
}

bool Filter::ChangePassword(std::string_view old_password, std::string_view new_password,
                            const std::function<int()>& draw) {
  if (!CheckPassword(old_password)) return false;
  if (FormatVersion < 1 || FormatVersion > 5) return true;
  if (FormatVersion >= 4) PasswordKey.assign(1, DrawKey(draw));
  const char key = PasswordKey.empty() ? '\0' : PasswordKey.front();
  Password = ScramblePassword(new_password, key, FormatVersion);
  return true;
}

}  // namespace zarvo
