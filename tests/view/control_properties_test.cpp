// What the container stores of the control, in bags and in streams.

#include "tests/support/failure_code.h"
#include "tests/support/log_world.h"
#include "view/control_stream.h"
#include "view/log_control.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
using tests::failureCode;
using tests::LogWorld;

class MemoryBag : public PropertyBag {
public:
    std::optional<Value> read(std::u16string_view name) override {
        asked.emplace_back(name);
        if (beforeRead) beforeRead();
        const auto found = values.find(std::u16string(name));
        if (found == values.end()) return std::nullopt;
        return found->second;
    }
    void write(std::u16string_view name, const Value& value) override {
        written.emplace_back(name);
        values[std::u16string(name)] = value;
    }

    std::map<std::u16string, Value> values;
    std::vector<std::u16string> asked;
    std::vector<std::u16string> written;
    std::function<void()> beforeRead;
};

constexpr std::uint32_t kWindowColour = 0x80000005;
constexpr std::uint32_t kTextColour = 0x80000008;
const std::vector<std::u16string> kAllNames = {u"BackColor", u"ForeColor", u"Enabled", u"Font"};

base::Font bigFont() {
    base::Font font;
    font.face = u"MS UI Gothic";
    font.points = 20.25F;
    font.weight = 700;
    font.underline = true;
    font.charset = 128;
    return font;
}

class ControlPropertiesTest : public testing::Test {
protected:
    void SetUp() override { world.addControl(); }
    LogControl& control() { return *world.controls.at(0); }
    ObjectRef fontObject() { return world.platform.fonts.make(bigFont()); }
    void changeAll(LogControl& changed) {
        changed.put(u"BackColor", 0x102030);
        changed.put(u"ForeColor", static_cast<std::int32_t>(0x80000011));
        changed.put(u"Enabled", false);
        changed.put(u"Font", fontObject());
    }
    void expectChanged(LogControl& changed) {
        EXPECT_EQ(changed.lvLog().colours(), (widgets::Colours{0x102030, 0x80000011}));
        EXPECT_FALSE(changed.lvLog().enabled());
        EXPECT_EQ(changed.lvLog().font(), bigFont());
    }
    std::int32_t loadFails(std::u16string_view name, Value value) {
        MemoryBag bag;
        bag.values[std::u16string(name)] = std::move(value);
        return failureCode([&] { control().restore(readProperties(bag)); });
    }

    LogWorld world;
};

TEST_F(ControlPropertiesTest, AnEmptyBagIsReadInOrderAndGivesTheDefaults) {
    changeAll(control());
    base::Font ambient;
    ambient.points = 9;
    control().setAmbientFont(ambient);
    MemoryBag bag;
    control().restore(readProperties(bag));
    EXPECT_EQ(bag.asked, kAllNames);
    EXPECT_EQ(control().lvLog().colours(), (widgets::Colours{kWindowColour, kTextColour}));
    EXPECT_TRUE(control().lvLog().enabled());
    EXPECT_EQ(control().lvLog().font(), ambient);
}

TEST_F(ControlPropertiesTest, DefaultsAreNotStored) {
    MemoryBag bag;
    writeProperties(control().properties(), bag);
    EXPECT_TRUE(bag.written.empty());
    changeAll(control());
    control().restore({});
    writeProperties(control().properties(), bag);
    EXPECT_TRUE(bag.written.empty());
}

TEST_F(ControlPropertiesTest, EachValueIsStoredByItself) {
    for (const std::u16string& name : kAllNames) {
        MemoryBag all;
        changeAll(control());
        writeProperties(control().properties(), all);
        MemoryBag one;
        one.values[name] = all.values.at(name);
        control().restore(readProperties(one));
        MemoryBag again;
        writeProperties(control().properties(), again);
        EXPECT_EQ(again.written, std::vector<std::u16string>{name});
    }
}

TEST_F(ControlPropertiesTest, ABagIsWrittenInOrderAndGivesBackWhatItGot) {
    changeAll(control());
    MemoryBag bag;
    writeProperties(control().properties(), bag);
    EXPECT_EQ(bag.written, kAllNames);
    world.addControl();
    world.controls[1]->restore(readProperties(bag));
    expectChanged(*world.controls[1]);
}

TEST_F(ControlPropertiesTest, AFontThatEqualsTheContainersIsNotStored) {
    control().put(u"Font", fontObject());
    control().setAmbientFont(bigFont());
    EXPECT_EQ(control().properties().font, nullptr);
    control().setAmbientFont(std::nullopt);
    EXPECT_NE(control().properties().font, nullptr);
}

TEST_F(ControlPropertiesTest, AFontThatWasReadIsListenedToAndNoLongerTheContainers) {
    MemoryBag bag;
    const ObjectRef stored = fontObject();
    bag.values[u"Font"] = stored;
    control().restore(readProperties(bag));
    EXPECT_EQ(control().font(), stored);
    control().setAmbientFont(base::Font());
    EXPECT_EQ(control().lvLog().font(), bigFont());
    stored->put(u"Size", 30);
    EXPECT_FLOAT_EQ(control().lvLog().font().points, 30);
}

TEST_F(ControlPropertiesTest, ChangesAreUnsavedUntilTheyAreSavedOrReplaced) {
    EXPECT_FALSE(control().unsaved());
    for (const auto& [name, value] : std::map<std::u16string, Value>{
             {u"BackColor", 1}, {u"ForeColor", 1}, {u"Enabled", false}, {u"Font", fontObject()}}) {
        control().put(name, value);
        EXPECT_TRUE(control().unsaved());
        control().markSaved();
        EXPECT_FALSE(control().unsaved());
    }
    control().put(u"Enabled", true);
    control().restore({});
    EXPECT_FALSE(control().unsaved()) << "what was just read need not be stored";
}

TEST_F(ControlPropertiesTest, ReadingTellsNobody) {
    control().mayChange = [](std::int32_t) -> bool { throw std::logic_error("asked"); };
    control().propertyChanged = [](std::int32_t) { ADD_FAILURE() << "told"; };
    MemoryBag bag;
    bag.values = {{u"BackColor", 1}, {u"Enabled", false}, {u"Font", fontObject()}};
    control().restore(readProperties(bag));
}

TEST_F(ControlPropertiesTest, ValuesAreConverted) {
    MemoryBag bag;
    bag.values = {{u"BackColor", u"12"},
                  {u"ForeColor", static_cast<std::int64_t>(kWindowColour)},
                  {u"Enabled", u"False"}};
    control().restore(readProperties(bag));
    EXPECT_EQ(control().lvLog().colours(), (widgets::Colours{12, kWindowColour}));
    EXPECT_FALSE(control().lvLog().enabled());
}

TEST_F(ControlPropertiesTest, ValuesOfAWrongKindFailAndLeaveTheControlAsItWas) {
    changeAll(control());
    const auto script = std::make_shared<tests::ScriptObject>("no font", world.calls);
    const std::int32_t mismatch = automation::code::kTypeMismatch;
    const std::int32_t overflow = automation::code::kOverflow;
    for (const std::u16string_view name : {u"BackColor", u"ForeColor", u"Enabled", u"Font"}) {
        EXPECT_EQ(loadFails(name, Value()), mismatch);
        EXPECT_EQ(loadFails(name, automation::Null()), mismatch);
        EXPECT_EQ(loadFails(name, automation::Missing()), mismatch);
        EXPECT_EQ(loadFails(name, automation::ErrorCode{automation::code::kFailure}), mismatch);
        EXPECT_EQ(loadFails(name, u"abc"), mismatch);
        EXPECT_EQ(loadFails(name, ObjectRef()), automation::code::kObjectRequired);
        EXPECT_NE(loadFails(name, script), 0);
    }
    for (const std::u16string_view name : {u"BackColor", u"ForeColor"}) {
        EXPECT_EQ(loadFails(name, std::int64_t{0x100000000}), overflow);
        EXPECT_EQ(loadFails(name, std::int64_t{-0x80000001LL}), overflow);
        EXPECT_EQ(loadFails(name, 1e10), overflow);
        EXPECT_EQ(loadFails(name, u"1e400"), overflow);
    }
    EXPECT_EQ(loadFails(u"Font", 12), mismatch);
    EXPECT_EQ(loadFails(u"Font", script), mismatch);
    expectChanged(control());
}

TEST_F(ControlPropertiesTest, AFailureInTheMiddleLeavesTheControlAsItWas) {
    MemoryBag bag;
    bag.values = {{u"BackColor", 1}, {u"ForeColor", 2}, {u"Enabled", false}, {u"Font", u"Tahoma"}};
    EXPECT_EQ(failureCode([&] { control().restore(readProperties(bag)); }), automation::code::kTypeMismatch);
    EXPECT_EQ(control().lvLog().colours(), widgets::Colours());
    EXPECT_TRUE(control().lvLog().enabled());
}

TEST_F(ControlPropertiesTest, ABagThatPutsPropertiesWhileItIsReadIsOverruled) {
    MemoryBag bag;
    bag.values = {{u"BackColor", 7}};
    bag.beforeRead = [this] { changeAll(control()); };
    control().restore(readProperties(bag));
    EXPECT_EQ(control().lvLog().colours(), (widgets::Colours{7, kTextColour}));
    EXPECT_EQ(control().lvLog().font(), base::Font());
}

// Streams.

class ControlStreamTest : public ControlPropertiesTest {
protected:
    ControlProperties decode(const std::vector<std::uint8_t>& bytes) {
        position = 0;
        return decodeProperties(
            [this, &bytes](std::span<std::uint8_t> wanted) {
                if (bytes.size() - position < wanted.size())
                    throw automation::AutomationError(automation::code::kFailure, u"end of the stream");
                std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(position), wanted.size(),
                            wanted.begin());
                position += wanted.size();
            },
            world.platform.fonts);
    }
    std::vector<std::uint8_t> everything() {
        changeAll(control());
        return encodeProperties(control().properties());
    }
    std::size_t position = 0;
};

TEST_F(ControlStreamTest, GivesBackWhatItGot) {
    const auto bytes = everything();
    world.addControl();
    world.controls[1]->restore(decode(bytes));
    expectChanged(*world.controls[1]);
    EXPECT_EQ(position, bytes.size());
}

TEST_F(ControlStreamTest, ReadsNothingBehindItsOwnBytes) {
    auto bytes = everything();
    const std::size_t own = bytes.size();
    bytes.insert(bytes.end(), 100, 0xEE);
    decode(bytes);
    EXPECT_EQ(position, own);
}

TEST_F(ControlStreamTest, DefaultsTakeNoSpaceButTheHead) {
    const auto bytes = encodeProperties(control().properties());
    EXPECT_EQ(bytes.size(), 12U);
    const ControlProperties read = decode(bytes);
    EXPECT_EQ(read.backColor, kWindowColour);
    EXPECT_EQ(read.foreColor, kTextColour);
    EXPECT_TRUE(read.enabled);
    EXPECT_EQ(read.font, nullptr);
}

TEST_F(ControlStreamTest, KeepsItsFormat) {
    control().put(u"BackColor", 0x01020304);
    control().put(u"Enabled", false);
    EXPECT_EQ(encodeProperties(control().properties()),
              (std::vector<std::uint8_t>{'C', 'V', 'P', 'S', 5, 0, 0, 0, 1, 0, 5, 0, 4, 3, 2, 1, 0}))
        << "streams that hosts have stored must stay readable";
}

TEST_F(ControlStreamTest, IsRefusedWhenItIsCutAtAnyByte) {
    const auto bytes = everything();
    ASSERT_GT(bytes.size(), 40U);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const std::vector<std::uint8_t> cut(bytes.begin(),
                                            bytes.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(failureCode([&] { decode(cut); }), 0) << length;
    }
}

TEST_F(ControlStreamTest, IsRefusedWhenItsOwnLengthCutsItOrGoesOn) {
    const auto bytes = everything();
    const auto body = bytes.size() - 12;
    for (std::size_t length = 0; length < 300; ++length) {
        if (length == body) continue;
        auto changed = bytes;
        changed.resize(12 + 300);
        changed[4] = static_cast<std::uint8_t>(length);
        changed[5] = static_cast<std::uint8_t>(length >> 8);
        EXPECT_EQ(failureCode([&] { decode(changed); }), automation::code::kDamagedStorage) << length;
    }
}

TEST_F(ControlStreamTest, AHugeLengthIsRefusedBeforeAnythingIsRead) {
    auto bytes = everything();
    for (std::size_t i = 4; i < 8; ++i) bytes[i] = 0xFF;
    EXPECT_EQ(failureCode([&] { decode(bytes); }), automation::code::kDamagedStorage);
    EXPECT_EQ(position, 12U);
}

TEST_F(ControlStreamTest, AnotherMarkVersionOrUnknownValueIsRefused) {
    for (const std::size_t place : {0U, 3U, 8U, 9U, 11U}) {
        auto bytes = everything();
        bytes[place] = static_cast<std::uint8_t>(bytes[place] ^ 0x40);
        EXPECT_EQ(failureCode([&] { decode(bytes); }), automation::code::kDamagedStorage) << place;
    }
}

TEST_F(ControlStreamTest, AFontWithALongNameFits) {
    base::Font font = bigFont();
    font.face.assign(10'000, u'x');
    control().put(u"Font", world.platform.fonts.make(font));
    control().restore(decode(encodeProperties(control().properties())));
    EXPECT_EQ(control().lvLog().font().face, std::u16string(256, u'x'));
}

// Whatever the bytes are, they are refused or they are properties that the control can take and store again.
TEST_F(ControlStreamTest, RandomDamageIsRefusedOrHarmless) {
    const auto bytes = everything();
    std::mt19937 random(20'260'731);
    int refused = 0;
    for (int round = 0; round < 20'000; ++round) {
        auto damaged = bytes;
        for (int change = static_cast<int>(random() % 3); change >= 0; --change)
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        ControlProperties read;
        if (failureCode([&] { read = decode(damaged); }) != 0) {
            ++refused;
            continue;
        }
        ASSERT_EQ(failureCode([&] { control().restore(read); }), 0);
        ASSERT_NO_THROW(encodeProperties(control().properties()));
    }
    EXPECT_GT(refused, 1'000);
    EXPECT_LT(refused, 19'999);
}

} // namespace
} // namespace cvlog::view
