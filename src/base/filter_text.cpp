#include "base/filter_text.h"

namespace sontaro {

namespace {

constexpr std::string_view kBlanks[] = {" ", "\t", "　"};  // the last one is of three bytes

}  // namespace

std::string LowerCase(std::string text) {
    for (char& letter : text)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

std::string FilterForm(std::string_view text) {
    for (std::size_t before = text.size() + 1; text.size() < before;) {
        before = text.size();
        for (const std::string_view blank : kBlanks) {
            if (text.starts_with(blank)) text.remove_prefix(blank.size());
            if (text.ends_with(blank)) text.remove_suffix(blank.size());
        }
    }
    return LowerCase(std::string(text));
}

}  // namespace sontaro
