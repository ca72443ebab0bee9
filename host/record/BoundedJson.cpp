#include "host/record/BoundedJson.h"

#include <vector>

namespace host
{
using nlohmann::json;

namespace
{
// Builds a value from the parser's events; an event answered with false ends the parser.
class Builder final : public nlohmann::json_sax<json>
{
public:
    Builder(const JsonLimits& limits, json& root, std::string& reason) : limits_(limits), root_(root), reason_(reason)
    {
    }

    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(number_integer_t value) override { return put(value); }
    bool number_unsigned(number_unsigned_t value) override { return put(value); }
    bool number_float(number_float_t value, const string_t&) override { return put(value); }
    bool string(string_t& value) override { return put(std::move(value)); }
    bool binary(binary_t&) override { return false; } // JSON texts have none
    bool start_object(size_t) override { return open(json::object()); }
    bool end_object() override { return close(); }
    bool start_array(size_t) override { return open(json::array()); }
    bool end_array() override { return close(); }
    bool key(string_t& value) override
    {
        key_ = std::move(value);
        return true;
    }
    bool parse_error(size_t position, const std::string&, const nlohmann::detail::exception&) override
    {
        reason_ = "no JSON at byte " + std::to_string(position);
        return false;
    }

private:
    bool put(json value) { return place(std::move(value)) != nullptr; }
    bool open(json value)
    {
        if (open_.size() >= limits_.depth) {
            reason_ = "deeper than " + std::to_string(limits_.depth) + " values within values";
            return false;
        }
        json* placed = place(std::move(value));
        if (placed != nullptr)
            open_.push_back(placed);
        return placed != nullptr;
    }
    bool close()
    {
        open_.pop_back();
        return true;
    }
    // A container is complete before its own container grows, so that no pointer to an open one is lost.
    json* place(json value)
    {
        if (++values_ > limits_.values) {
            reason_ = "more than " + std::to_string(limits_.values) + " values";
            return nullptr;
        }
        if (open_.empty())
            return &(root_ = std::move(value));
        json& container = *open_.back();
        if (container.is_array())
            return &container.emplace_back(std::move(value));
        return &(container[key_] = std::move(value));
    }

    const JsonLimits& limits_;
    json& root_;
    std::string& reason_;
    std::string key_;
    std::vector<json*> open_;
    size_t values_ = 0;
};
} // namespace

bool parseBounded(std::string_view text, const JsonLimits& limits, json& value, std::string& reason)
{
    json root;
    std::string why;
    Builder builder(limits, root, why);
    if (!json::sax_parse(text.begin(), text.end(), &builder)) {
        reason = why.empty() ? "no JSON" : why;
        return false;
    }
    value = std::move(root);
    return true;
}
} // namespace host
