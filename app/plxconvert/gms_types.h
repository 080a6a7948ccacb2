#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace plx::tool {

/// Kinds of GMS objects in the order of GMStoPLX_Object_Types.
constexpr std::size_t kGmsTypes = 9;
struct GmsType {
    const char* name;
    const char* help;
};
const std::array<GmsType, kGmsTypes>& gms_types();

/// Reads a list of type names: comma separated, letters of either case, or "all". An empty list is "all".
///
/// @throws std::invalid_argument with a text for the user.
std::array<bool, kGmsTypes> parse_gms_types(const std::string& list);

}  // namespace plx::tool
