#include "tests/support/dao_double.h"

#include "base/text.h"
#include "tests/support/dao_objects.h"

#include <cstring>

namespace cvlog::tests {

using namespace automation;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kPages = 4;
constexpr std::int32_t kImplicitCommitSync = 59;

std::string bytesOf(DaoDouble::Format format) {
    std::string bytes("\0\1\0\0", 4);
    bytes += format == DaoDouble::Format::Jet ? "Standard Jet DB" : "Standard ACE DB";
    bytes.resize(kPage * kPages);
    return bytes;
}

class DaoEngineObject final : public DaoObject {
public:
    DaoEngineObject(DaoWorld world, DaoDouble::Format newest)
        : DaoObject(std::move(world), "DBEngine"), newest_(newest) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoEngineObject;
        static const DispatchTable table = {
            method<Self>(u"OpenDatabase", 1, Type::Object,
                         {{u"Name", Type::Text},
                          optional(u"Options", Type::Any),
                          optional(u"ReadOnly", Type::Any),
                          optional(u"Connect", Type::Any)},
                         [](Self& self, std::span<Value> values) {
                             // Read-write and shared, as who says nothing gets it: the double knows no other way.
                             for (const Value& more : values.subspan(1))
                                 if (!more.isNothing()) raise(DaoError::InvalidArgument);
                             return self.openDatabase(values[0].as<std::u16string>());
                         }),
            method<Self>(u"SetOption", 2, Type::Nothing, {{u"Option", Type::Int32}, {u"Value", Type::Any}},
                         [](Self& self, std::span<Value> values) {
                             if (values[0].as<std::int32_t>() != kImplicitCommitSync)
                                 raise(DaoError::InvalidArgument);
                             self.world_->writesAtOnce = toText(values[1]) == u"Yes";
                         }),
        };
        return table;
    }

private:
    ObjectRef openDatabase(const std::u16string& path) {
        if (!world_->files.fileExists(path)) raise(DaoError::FileNotFound);
        const std::vector<std::byte> bytes = world_->files.firstBytes(path, kPage * kPages);
        const auto is = [&](DaoDouble::Format format) {
            const std::string wanted = bytesOf(format);
            return bytes.size() == wanted.size() &&
                   std::memcmp(bytes.data(), wanted.data(), wanted.size()) == 0;
        };
        const bool known =
            is(DaoDouble::Format::Jet) || (newest_ == DaoDouble::Format::Ace && is(DaoDouble::Format::Ace));
        if (!known || !world_->content.contains(path)) raise(DaoError::UnrecognizedFormat);
        return makeDaoDatabase(world_, path);
    }

    DaoDouble::Format newest_;
};

} // namespace

DaoDouble::DaoDouble(CallCounter& calls, ports::FileSystem& files)
    : world_(new World{.calls = calls, .files = files, .content = {}}) {}

ObjectRef DaoDouble::makeEngine(Format newest) { return std::make_shared<DaoEngineObject>(world_, newest); }

std::string DaoDouble::addDatabase(std::u16string_view path, Format format) {
    world_->content[std::u16string(path)] = DaoFile();
    return bytesOf(format);
}

void DaoDouble::crash() {
    for (auto& [path, file] : world_->content) file.crash();
    world_->openDatabases = 0;
    ++world_->crashes;
}

DaoObject::DaoObject(DaoWorld world, std::string name) : world_(std::move(world)), name_(std::move(name)) {
    ++world_->alive;
}

DaoObject::~DaoObject() { --world_->alive; }

Value DaoObject::call(std::u16string_view member, std::span<Value> arguments) {
    enter(member);
    return DispatchObject::call(member, arguments);
}

void DaoObject::put(std::u16string_view member, const Value& value) {
    enter(member);
    DispatchObject::put(member, value);
}

void DaoObject::enter(std::u16string_view member) const {
    world_->calls.call("DAO." + name_ + "." + base::toUtf8(member));
    if (!isOpen()) raise(DaoError::ObjectInvalid);
}

std::size_t daoIndexOf(const Value& index, const std::vector<std::u16string>& names) {
    if (index.is<std::u16string>()) {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (base::equalsIgnoringCase(names[i], index.as<std::u16string>())) return i;
        raise(DaoError::ItemNotFound);
    }
    const std::int32_t position = toInt32(index);
    if (position < 0 || static_cast<std::size_t>(position) >= names.size()) raise(DaoError::ItemNotFound);
    return static_cast<std::size_t>(position);
}

} // namespace cvlog::tests
