// A project of the desktop database through COM: the log finds an installed DAO by name, drives it late-bound and hands
// its database to the host. What is installed here is the double.

#include "platform/win32/file_system.h"
#include "tests/support/dao_double.h"
#include "tests/windows/com_test.h"
#include "tests/windows/dispatch_double.h"
#include "tests/windows/script_host.h"

#include <filesystem>
#include <fstream>

namespace cvlog::tests {
namespace {

constexpr CLSID kDaoClass = {0x5b0e6f4a, 0x2c1d, 0x4e8b, {0x9a, 0x37, 0x6d, 0x50, 0x1e, 0xc4, 0x82, 0xf7}};
constexpr wchar_t kOlderName[] = L"DAO.DBEngine.36";
constexpr wchar_t kNewerName[] = L"DAO.DBEngine.120";

class InstalledDao : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        const std::string bytes = dao_.addDatabase(databasePath());
        std::ofstream(std::filesystem::path(project_.path() + L"\\PrjData.mdb"), std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file().execute(u"create table LogInfo (MethodName Text(50), ObjectName Text(50), "
                       u"ObjectType Text(50), LogMessage LongText, ReturnMessage Integer)");
        file().flush();
    }
    InstalledClass install(const wchar_t* name, DaoDouble::Format newest) {
        return {name, kDaoClass, [this, newest] {
                    return std::static_pointer_cast<automation::DispatchObject>(dao_.makeEngine(newest));
                }};
    }
    std::u16string databasePath() const {
        const std::wstring path = project_.path() + L"\\PrjData.mdb";
        return {reinterpret_cast<const char16_t*>(path.data()), path.size()};
    }
    DaoFile& file() { return dao_.file(databasePath()); }
    static void call(IDispatch* object, const wchar_t* name, std::initializer_list<Variant> arguments = {}) {
        EXPECT_EQ(callByName(object, name, DISPATCH_METHOD, arguments), S_OK);
    }
    static ComPtr<IDispatch> databaseOf(IDispatch* log) {
        Variant result;
        EXPECT_EQ(callByName(log, L"LogDB", DISPATCH_PROPERTYGET, {}, &result), S_OK);
        return result.vt == VT_DISPATCH ? ComPtr<IDispatch>(result.pdispVal) : ComPtr<IDispatch>();
    }
    void writeThree(IDispatch* log) {
        call(log, L"SeriesStart", {Variant(L"verify")}); // so that no box is shown
        for (int i = 0; i < 3; ++i)
            call(log, L"Add", {Variant(L"verify"), Variant(1L), Variant(L"O1"), Variant(L"message")});
    }

    const ProjectFolder project_;
    CallCounter calls_;
    platform::win32::FileSystem files_;
    DaoDouble dao_{calls_, files_};
};

TEST_F(InstalledDao, IsFoundByNameUpgradedWrittenAndLetGo) {
    {
        const InstalledClass installed = install(kOlderName, DaoDouble::Format::Jet);
        const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
        const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
        ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
        writeThree(log.Get());
        EXPECT_EQ(dao_.openDatabases(), 1);
        call(log.Get(), L"CloseDB");
        EXPECT_EQ(dao_.openDatabases(), 0);
    }
    DaoTable& table = file().table(u"LogInfo");
    ASSERT_EQ(table.rows.size(), 3u);
    const auto stored = [&](std::size_t row, std::u16string_view column) {
        return table.rows[row].values[table.indexOf(column)];
    };
    EXPECT_EQ(stored(2, u"RecordNum"), automation::Value(3));
    EXPECT_EQ(stored(2, u"ReturnMessage"), automation::Value(1));
    EXPECT_EQ(stored(2, u"Errors"), automation::Value(u""));
    EXPECT_EQ(DispatchDouble::alive(), 0);
    EXPECT_EQ(dao_.alive(), 0) << "the engine goes with the last object of the component";
}

TEST_F(InstalledDao, GivesTheHostItsOwnDatabase) {
    const InstalledClass installed = install(kNewerName, DaoDouble::Format::Ace);
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project_.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
    ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
    writeThree(log.Get());
    const ComPtr<IDispatch> database = databaseOf(log.Get());
    ASSERT_TRUE(database);
    EXPECT_NE(dynamic_cast<DispatchDouble*>(database.Get()), nullptr) << "the very pointer";
    call(database.Get(), L"Execute", {Variant(L"delete from LogInfo where RecordNum <= 2")});
    EXPECT_EQ(file().table(u"LogInfo").rows.size(), 1u);
    EXPECT_EQ(callByName(database.Get(), L"Execute", DISPATCH_METHOD, {Variant(L"select * from LogInfo")}),
              DISP_E_EXCEPTION);
    call(log.Get(), L"CloseDB");
    EXPECT_FALSE(databaseOf(log.Get()));
    EXPECT_EQ(callByName(database.Get(), L"Name", DISPATCH_PROPERTYGET, {}), DISP_E_EXCEPTION) << "closed";
}

TEST_F(InstalledDao, ThatIsMissingLeavesTheLogUnopened) {
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project_.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    EXPECT_FALSE(openDb(log.Get(), workspace.Get()));
    EXPECT_FALSE(databaseOf(log.Get()));
    call(log.Get(), L"CloseDB");
    const InstalledClass installed = install(kOlderName, DaoDouble::Format::Jet);
    EXPECT_TRUE(openDb(log.Get(), workspace.Get())) << "it was installed meanwhile";
    call(log.Get(), L"CloseDB");
}

} // namespace
} // namespace cvlog::tests
