#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace plx {

/// Most characters of an expanded file name.
constexpr std::size_t kMaxFileName = 1023;

/// Tells what stands for a token "$...>"; no value when the token can never be replaced.
using TokenValue = std::function<std::optional<std::string>(std::string_view token)>;

/// Replaces the tokens of a text, always the first one and all its repetitions, until none is left.
///
/// A text whose first ">" stands before its first "$" is left as it is. Values may hold tokens in turn; to
/// end also where they go in circles, expansion stops after 1000 tokens or when the text passes 65536 bytes.
/// It stops as well at a token without a value: that one and all after it stay.
std::string expand_tokens(std::string text, const TokenValue& value_of);

/// A file name with the tokens of this process expanded, "/" turned into a backslash, cut to kMaxFileName.
std::string fix_file_name(std::string name);

}  // namespace plx
