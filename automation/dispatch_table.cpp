#include "automation/dispatch_table.h"

#include "automation/error.h"
#include "base/text.h"

#include <algorithm>

namespace cvlog::automation {

namespace {

Value emptyOf(Type type) { return convert(Value(), type); }

std::vector<Value*> placeArguments(const Member& member, const CallArguments& arguments) {
    const std::size_t count = member.parameters.size();
    if (arguments.positional.size() + (arguments.assigned ? 1 : 0) > count)
        throw ArgumentError(AutomationError(code::kBadParameterCount, u"Wrong number of arguments"), count);
    std::vector<Value*> placed(count, nullptr);
    std::copy(arguments.positional.begin(), arguments.positional.end(), placed.begin());
    if (arguments.assigned) placed.back() = arguments.assigned;
    for (const NamedArgument& named : arguments.named) {
        if (named.parameter < 0 || static_cast<std::size_t>(named.parameter) >= count)
            throw ArgumentError(AutomationError(code::kParameterNotFound, u"Named argument not found"),
                                count);
        Value*& place = placed[static_cast<std::size_t>(named.parameter)];
        if (place)
            throw ArgumentError(AutomationError(code::kBadParameterCount, u"Argument given twice"), count);
        place = named.value;
    }
    return placed;
}

Value convertArgument(const Member& member, std::size_t index, const Value* given) {
    const Parameter& parameter = member.parameters[index];
    try {
        if (given && !given->is<Missing>()) return convert(*given, parameter.type);
        if (!parameter.optional) throw AutomationError(code::kParameterNotOptional, u"Argument not optional");
        return emptyOf(parameter.type);
    } catch (const AutomationError& problem) {
        const std::u16string description =
            problem.description() + u" (" + std::u16string(parameter.name) + u")";
        throw ArgumentError(AutomationError(problem.code(), description, problem.source()), index);
    }
}

// What a member calls may complain of its arguments, too: those are the member's, not its caller's.
Value run(const Member& member, Object& target, std::span<Value> arguments) {
    try {
        return member.handler(target, arguments);
    } catch (const ArgumentError& problem) {
        throw AutomationError(problem.code(), problem.description(), problem.source());
    }
}

bool isForTheValue(const Member& member, const CallArguments& arguments) {
    return member.kind == MemberKind::PropertyGet && member.result == Type::Object &&
           member.parameters.empty() && !arguments.positional.empty() && arguments.named.empty();
}

Value readDefaultMember(const Value& owner, const CallArguments& arguments) {
    const ObjectRef object = toObject(owner);
    if (!object) throw AutomationError(code::kObjectRequired, u"Object required");
    std::vector<Value> values;
    for (const Value* value : arguments.positional) values.push_back(*value);
    return object->call(u"", values);
}

} // namespace

DispatchTable::DispatchTable(std::initializer_list<Member> members) : members_(members) {}

std::optional<std::int32_t> DispatchTable::idOf(std::u16string_view name) const noexcept {
    for (const Member& member : members_)
        if (base::equalsIgnoringCase(member.name, name)) return member.id;
    return std::nullopt;
}

std::optional<std::int32_t> DispatchTable::parameterIdOf(std::u16string_view name,
                                                         std::u16string_view parameter) const noexcept {
    for (const Member& member : members_) {
        if (!base::equalsIgnoringCase(member.name, name)) continue;
        for (std::size_t i = 0; i < member.parameters.size(); ++i)
            if (base::equalsIgnoringCase(member.parameters[i].name, parameter))
                return static_cast<std::int32_t>(i);
    }
    return std::nullopt;
}

const Member* DispatchTable::find(std::int32_t id, MemberKind kind) const noexcept {
    const auto found = std::find_if(members_.begin(), members_.end(), [&](const Member& member) {
        return member.id == id && member.kind == kind;
    });
    return found == members_.end() ? nullptr : &*found;
}

bool DispatchTable::has(std::int32_t id) const noexcept {
    return std::any_of(members_.begin(), members_.end(),
                       [id](const Member& member) { return member.id == id; });
}

Value invokeMember(Object& target, const Member& member, const CallArguments& arguments) {
    if (isForTheValue(member, arguments)) return readDefaultMember(run(member, target, {}), arguments);
    const std::vector<Value*> placed = placeArguments(member, arguments);
    std::vector<Value> converted;
    converted.reserve(placed.size());
    for (std::size_t i = 0; i < placed.size(); ++i)
        converted.push_back(convertArgument(member, i, placed[i]));
    const std::vector<Value> given = converted;
    Value result = run(member, target, converted);
    for (std::size_t i = 0; i < placed.size(); ++i)
        if (member.parameters[i].byReference && placed[i] && !(converted[i] == given[i]))
            *placed[i] = converted[i];
    return result;
}

const Member* DispatchObject::findByName(std::u16string_view name, MemberKind kind) const {
    const DispatchTable& table = dispatchTable();
    const auto id = name.empty() ? std::optional<std::int32_t>(0) : table.idOf(name);
    if (!id || !table.has(*id))
        throw AutomationError(code::kUnknownName, u"Unknown name: " + std::u16string(name));
    return table.find(*id, kind);
}

Value DispatchObject::call(std::u16string_view name, std::span<Value> values) {
    const Member* member = findByName(name, MemberKind::Method);
    if (!member) member = findByName(name, MemberKind::PropertyGet);
    if (!member) throw AutomationError(code::kMemberNotFound, u"Member not found: " + std::u16string(name));
    CallArguments arguments;
    for (Value& value : values) arguments.positional.push_back(&value);
    return invokeMember(*this, *member, arguments);
}

Value DispatchObject::get(std::u16string_view name) { return call(name, {}); }

void DispatchObject::put(std::u16string_view name, const Value& value) { putIndexed(name, {}, value); }

void DispatchObject::putIndexed(std::u16string_view name, std::span<Value> values, const Value& value) {
    const Member* member = findByName(name, MemberKind::PropertyPut);
    if (!member) throw AutomationError(code::kMemberNotFound, u"Member not found: " + std::u16string(name));
    Value copy = value;
    CallArguments arguments;
    for (Value& argument : values) arguments.positional.push_back(&argument);
    arguments.assigned = &copy;
    invokeMember(*this, *member, arguments);
}

} // namespace cvlog::automation
