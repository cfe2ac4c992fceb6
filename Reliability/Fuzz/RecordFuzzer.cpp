// Any bytes as the JSON of our records.
#include "Finding.h"

#include "TSY/Display.h"
#include "TSY/Shortcut.h"

#include <cstddef>
#include <cstdint>

namespace {

/// With white space around it, and with a member more in front: the same record.
void holdVariants(const NSData& text, const auto& record, auto read) {
    NSData wide{' ', '\n'};
    wide.insert(wide.end(), text.begin(), text.end());
    wide.push_back('\t');
    fuzz::hold(read(wide) == record, "white space around a record means nothing");
    constexpr std::string_view member = R"({"unknown":[1e999,{}],)";
    NSData more(member.begin(), member.end());
    more.insert(more.end(), text.begin() + 1, text.end());
    fuzz::hold(!record || text.front() != '{' || read(more) == record,
               "a member that is not known means nothing");
}

template <typename Record>
void read(const NSData& text) {
    const auto record = Record::fromJSON(text);
    fuzz::hold(!record || Record::fromJSON(record->json()) == record,
               "a record that was read is written so that it is read again");
    if (!text.empty())
        holdVariants(text, record, Record::fromJSON);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const NSData text(bytes, bytes + size);
    read<tsy::ModeSpec>(text);
    read<tsy::Shortcut>(text);
    return 0;
}
