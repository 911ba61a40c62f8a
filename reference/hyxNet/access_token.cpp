/// Makes and compares tokens.
#include "reference/hyxNet/access_token.h"

#include <sys/random.h>

#include <stdexcept>

namespace hyxNet {

std::string makeAccessToken() {
    unsigned char bytes[16];
    if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes)
        throw std::runtime_error("the system gives no random numbers");
    constexpr char digits[] = "0123456789abcdef";
    std::string token;
    for (unsigned char const byte : bytes) {
        token += digits[byte >> 4];
        token += digits[byte & 15];
    }
    return token;
}

bool sameToken(std::string const& one, std::string const& other) {
    if (one.size() != other.size())
        return false;
    unsigned char difference = 0;
    for (size_t i = 0; i < one.size(); ++i)
        difference |= static_cast<unsigned char>(one[i] ^ other[i]);
    return difference == 0;
}

} // namespace hyxNet
