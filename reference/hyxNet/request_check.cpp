// Reads through a request for its token and its depth only.
#include "reference/hyxNet/request_check.h"

#include "reference/hyxNet/access_token.h"

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace hyxNet {
namespace {

constexpr int mostLevels = 32;

/// Follows the events of the parser, which keeps nothing. Each answer says whether to go on.
class TokenReader : public nlohmann::json_sax<nlohmann::json> {
public:
    bool null() override { return value(); }

    bool boolean(bool) override { return value(); }

    bool number_integer(number_integer_t) override { return value(); }

    bool number_unsigned(number_unsigned_t) override { return value(); }

    bool number_float(number_float_t, string_t const&) override { return value(); }

    bool binary(binary_t&) override { return value(); }

    bool string(string_t& text) override {
        if (m_atToken)
            token = text;
        return value();
    }

    bool key(string_t& name) override {
        m_atToken = m_level == 1 && name == "token";
        return true;
    }

    bool start_object(std::size_t) override {
        isObject = isObject || m_level == 0;
        return enter();
    }

    bool start_array(std::size_t) override { return m_level > 0 && enter(); }

    bool end_object() override { return leave(); }

    bool end_array() override { return leave(); }

    bool parse_error(std::size_t, std::string const&, nlohmann::detail::exception const&) override { return false; }

    std::string token;
    bool isObject = false;
    bool isTooDeep = false;

private:
    bool value() {
        m_atToken = false;
        return m_level > 0;
    }

    bool enter() {
        m_atToken = false;
        isTooDeep = ++m_level > mostLevels;
        return !isTooDeep;
    }

    bool leave() {
        --m_level;
        return true;
    }

    int m_level = 0;
    bool m_atToken = false;
};

} // namespace

void checkRequest(std::string const& text, std::string const& token) {
    TokenReader reader;
    bool const whole = nlohmann::json::sax_parse(text, &reader);
    if (!token.empty() && !sameToken(token, reader.token))
        throw std::invalid_argument("the token is missing or wrong");
    if (reader.isTooDeep)
        throw std::invalid_argument("a request can be nested " + std::to_string(mostLevels) + " deep at most");
    if (!whole || !reader.isObject)
        throw std::invalid_argument("a request must be a JSON object");
}

} // namespace hyxNet
