// The JSON reader over any bytes: whatever is accepted comes back the same from its own JSON.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "cli/filter_json.h"
#include "cli/listing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const zarvo::CodePage page = *zarvo::CodePage::Find("windows-1252");
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  zarvo::Filter filter;
  if (FilterFromJson(json, page, filter)) {
    if (filter != zarvo::Filter()) std::abort();
    return 0;
  }
  zarvo::Filter again;
  if (FilterFromJson(FilterToJson(filter, page), page, again)) std::abort();
  if (again != filter) std::abort();
  static_cast<void>(FilterListing(filter, page));
  return 0;
}
