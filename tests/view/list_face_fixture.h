#pragma once

#include "automation/dispatch_table.h"
#include "automation/error.h"
#include "tests/support/log_world.h"
#include "view/list_face.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cvlog::view {

/// A list with three rows, as others see it: through the control's Controls.
class ListFaceTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.addControl();
        for (const char16_t* text : {u"c", u"a", u"b"}) world.list().append(rowOf(text));
        face = automation::toObject(child(controlsOf(0), u"Item", u"lvLog"));
        items = child(face, u"ListItems");
        headers = child(face, u"ColumnHeaders");
    }
    ~ListFaceTest() override = default;

    static widgets::RowPtr rowOf(const std::u16string& text) {
        return widgets::makeRow({text,
                                 u"tag " + text,
                                 u"Ok",
                                 {{u"Elapsed", u"elapsed " + text, u"et", u"ei", u"tip"},
                                  {u"Method", u"method " + text, {}, {}, {}}}});
    }
    automation::ObjectRef controlsOf(std::size_t control) {
        return automation::toObject(world.controls[control]->get(u"Controls"));
    }
    template <class... Arguments>
    static automation::ObjectRef child(const automation::ObjectRef& owner, std::u16string_view member,
                                       Arguments&&... arguments) {
        return automation::toObject(owner->invoke(member, std::forward<Arguments>(arguments)...));
    }
    automation::ObjectRef item(int position) { return child(items, u"Item", position); }
    automation::ObjectRef header(int index) { return child(headers, u"Item", index); }

    static std::u16string text(const automation::ObjectRef& object, std::u16string_view member) {
        return automation::toText(object->get(member));
    }
    static std::int32_t number(const automation::ObjectRef& object, std::u16string_view member) {
        return automation::toInt32(object->get(member));
    }
    static bool truth(const automation::ObjectRef& object, std::u16string_view member) {
        return automation::toBoolean(object->get(member));
    }
    static void putAt(const automation::ObjectRef& object, std::u16string_view member, int index,
                      const automation::Value& value) {
        automation::Value arguments[] = {automation::Value(index)};
        dynamic_cast<automation::DispatchObject&>(*object).putIndexed(member, arguments, value);
    }
    std::vector<std::u16string> texts(std::size_t list = 0) {
        std::vector<std::u16string> result;
        for (int i = 1; i <= world.list(list).rowCount(); ++i)
            result.emplace_back(world.list(list).row(i).text());
        return result;
    }

    /// The code of the error that the action raises, 0 for none.
    template <class Action>
    static std::int32_t codeOf(Action&& action) {
        try {
            action();
        } catch (const automation::AutomationError& error) {
            EXPECT_FALSE(error.description().empty());
            return error.code();
        }
        return 0;
    }

    /// Every member of the object that can be called without arguments, and every put, ends with this code.
    static void expectEveryMember(const automation::ObjectRef& object, std::int32_t wanted) {
        const auto& dispatch = dynamic_cast<const automation::DispatchObject&>(*object);
        for (const automation::Member& member : dispatch.dispatchTable().members()) {
            std::vector<automation::Value> values;
            for (const automation::Parameter& parameter : member.parameters)
                values.push_back(argumentFor(parameter.type));
            automation::CallArguments arguments;
            for (automation::Value& value : values) arguments.positional.push_back(&value);
            EXPECT_EQ(codeOf([&] { automation::invokeMember(*object, member, arguments); }), wanted)
                << std::string(member.name.begin(), member.name.end()) << " kind "
                << static_cast<int>(member.kind);
        }
    }
    /// An argument that the member would take if its object were there.
    static automation::Value argumentFor(automation::Type type) {
        return automation::convert(type == automation::Type::Object
                                       ? automation::Value(automation::ObjectRef())
                                       : automation::Value(1),
                                   type);
    }

    tests::LogWorld world;
    automation::ObjectRef face;
    automation::ObjectRef items;
    automation::ObjectRef headers;
};

} // namespace cvlog::view
