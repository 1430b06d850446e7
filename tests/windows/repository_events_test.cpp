// The host's repository tells of changed objects through a connection point of its own, as foreign programs do.

#include "tests/windows/event_source_double.h"
#include "tests/windows/loaded_library.h"

#include <commctrl.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <utility>

namespace cvlog::tests {
namespace {

constexpr DISPID kObjectModified = 1;

/// A host whose repository raises events.
class RepositoryHost {
public:
    explicit RepositoryHost(const ProjectFolder& project)
        : workspace_(com::adopt(makeWorkspace(project.path()))) {
        Variant members;
        EXPECT_EQ(callByName(workspace_.Get(), L"Repository", DISPATCH_PROPERTYGET, {}, &members), S_OK);
        repository_ = com::adopt(new EventSourceDouble(members.pdispVal));
        workspace_->replace(L"Repository", [this](ScriptedDispatch::Arguments&, VARIANT* result) {
            giveObject(result, repository_.Get());
            return S_OK;
        });
        workspace_->replace(L"TranslateReturnCode", [](ScriptedDispatch::Arguments&, VARIANT* result) {
            giveText(result, L"RC");
            return S_OK;
        });
        workspace_->member(L"SetMainWindowCursor", [this](ScriptedDispatch::Arguments&, VARIANT* result) {
            if (onCursor) onCursor();
            result->vt = VT_I4;
            result->lVal = 0;
            return S_OK;
        });
    }
    IDispatch* workspace() const { return workspace_.Get(); }
    EventSourceDouble& repository() { return *repository_.Get(); }
    std::function<void()> onCursor; // runs when the log asks for a pointer
    void modify(const wchar_t* object) { repository_->fire(kObjectModified, {Variant(object)}); }

private:
    ComPtr<ScriptedDispatch> workspace_;
    ComPtr<EventSourceDouble> repository_;
};

class RepositoryEvents : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        before_ = ScriptedDispatch::alive();
        ASSERT_TRUE(library_.emplace().loaded());
        host_.emplace(project_);
        log_ = create(L"CVLog3.CVLog");
        for (ComPtr<IDispatch>& control : controls_) control = create(L"CVLog3.CVLogControl");
        ASSERT_TRUE(openDb(log_.Get(), host_->workspace()));
    }
    void TearDown() override {
        releaseAll();
        EXPECT_EQ(library_->canUnload(), S_OK);
        library_.reset();
        host_.reset();
        EXPECT_EQ(ScriptedDispatch::alive(), before_) << "a host object is left";
        ComTest::TearDown();
    }
    void releaseAll() {
        for (ComPtr<IDispatch>& control : controls_) control.Reset();
        log_.Reset();
    }

    std::filesystem::path errorsFile() const { return project_.path() + L"\\given.errors"; }
    void deleteErrorsFile() { EXPECT_TRUE(std::filesystem::remove(errorsFile())); }
    /// Adds an entry on O1 that has an errors file with two messages.
    void addEntry() {
        std::ofstream(errorsFile()) << "one\ntwo\n";
        EXPECT_EQ(callByName(log_.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
        EXPECT_EQ(callByName(log_.Get(), L"Add", DISPATCH_METHOD,
                             {Variant(L"verify"), Variant(2L), Variant(L"O1"), Variant(L"message"),
                              Variant(L"given.errors")}),
                  S_OK);
    }
    static ComPtr<IDispatch> get(IDispatch* owner, const wchar_t* member,
                                 std::initializer_list<Variant> arguments = {}) {
        Variant result;
        EXPECT_EQ(callByName(owner, member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, &result),
                  S_OK);
        EXPECT_EQ(result.vt, VT_DISPATCH) << "no object";
        return result.vt == VT_DISPATCH ? ComPtr<IDispatch>(result.pdispVal) : nullptr;
    }
    ComPtr<IDispatch> list(std::size_t control = 0) {
        return get(get(controls_[control].Get(), L"Controls").Get(), L"Item", {Variant(L"lvLog")});
    }
    ComPtr<IDispatch> row(LONG position, std::size_t control = 0) {
        return get(get(list(control).Get(), L"ListItems").Get(), L"Item", {Variant(position)});
    }
    LONG rows(std::size_t control) {
        Variant count;
        EXPECT_EQ(callByName(get(list(control).Get(), L"ListItems").Get(), L"Count", DISPATCH_PROPERTYGET, {},
                             &count),
                  S_OK);
        return count.lVal;
    }
    /// The errors file of the entry in the first row; "" for none.
    std::wstring reference(std::size_t control = 0) {
        const ComPtr<IDispatch> cell =
            get(get(row(1, control).Get(), L"ListSubItems").Get(), L"Item", {Variant(L"Message")});
        Variant tag;
        EXPECT_EQ(callByName(cell.Get(), L"Tag", DISPATCH_PROPERTYGET, {}, &tag), S_OK);
        return tag.vt == VT_BSTR && tag.bstrVal ? tag.bstrVal : L"";
    }
    void openEntry() {
        Variant item;
        item.vt = VT_DISPATCH;
        row(1).CopyTo(&item.pdispVal);
        EXPECT_EQ(callByName(list().Get(), L"SelectedItem", DISPATCH_PROPERTYPUTREF, {item}), S_OK);
        Variant control;
        control.vt = VT_DISPATCH;
        controls_[0].CopyTo(&control.pdispVal);
        EXPECT_EQ(callByName(controls_[0].Get(), L"LogDblClick", DISPATCH_METHOD, {control}), S_OK);
        ASSERT_EQ(rows(0), 3);
        ASSERT_EQ(rows(1), 3);
    }
    void expectOpenAndReferring() {
        EXPECT_EQ(rows(0), 3);
        EXPECT_EQ(rows(1), 3);
        EXPECT_EQ(reference(), errorsFile().wstring());
    }
    void closeDb() { EXPECT_EQ(callByName(log_.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK); }

    int before_ = 0;
    ProjectFolder project_;
    std::optional<LoadedLibrary> library_;
    std::optional<RepositoryHost> host_;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> controls_[2];
};

TEST_F(RepositoryEvents, OfAChangedObjectCloseItsEntriesWhoseErrorsFileIsGone) {
    addEntry();
    openEntry();
    deleteErrorsFile();
    host_->modify(L"o1");
    EXPECT_EQ(rows(0), 1);
    EXPECT_EQ(rows(1), 1);
    EXPECT_EQ(reference(0), L"");
    EXPECT_EQ(reference(1), errorsFile().wstring()) << "the other list's own";
}

TEST_F(RepositoryEvents, OfOtherObjectsAndOtherKindsAndOfObjectsThatHaveTheirFileChangeNothing) {
    addEntry();
    openEntry();
    host_->modify(L"O1");
    expectOpenAndReferring();
    deleteErrorsFile();
    host_->modify(L"O2");
    host_->modify(L"");
    host_->repository().fire(kObjectModified + 1, {Variant(L"O1")});
    host_->repository().fire(kObjectModified);
    host_->repository().fire(kObjectModified, {Variant(1L)});
    expectOpenAndReferring();
}

TEST_F(RepositoryEvents, MayPassTheIdentifierByReference) {
    addEntry();
    openEntry();
    deleteErrorsFile();
    BSTR id = SysAllocString(L"O1");
    Variant reference;
    reference.vt = VT_BSTR | VT_BYREF;
    reference.pbstrVal = &id;
    host_->repository().fire(kObjectModified, {reference});
    EXPECT_EQ(rows(0), 1);
    EXPECT_STREQ(id, L"O1");
    SysFreeString(id);
}

TEST_F(RepositoryEvents, AreHeardThroughOneConnectionUntilTheDatabaseIsClosed) {
    EXPECT_EQ(host_->repository().advised, 1);
    EXPECT_TRUE(host_->repository().hasListener());
    EXPECT_TRUE(openDb(log_.Get(), host_->workspace()));
    EXPECT_TRUE(host_->repository().hasListener());
    EXPECT_EQ(host_->repository().advised, 2) << "the connection before was ended: there is room for one";
    closeDb();
    EXPECT_FALSE(host_->repository().hasListener());
}

TEST_F(RepositoryEvents, AreHeardNoLongerWhenEverythingWasReleasedWithoutAClose) {
    addEntry();
    releaseAll();
    EXPECT_FALSE(host_->repository().hasListener());
    EXPECT_EQ(library_->canUnload(), S_OK);
}

TEST_F(RepositoryEvents, OfAHostThatIsGoneAndCannotLetGoAreNotHeardAfterTheClose) {
    host_->repository().unadviseAnswer = RPC_E_DISCONNECTED;
    closeDb();
    ASSERT_TRUE(host_->repository().hasListener()) << "it could not let go";
    RepositoryHost other(project_);
    ASSERT_TRUE(openDb(log_.Get(), other.workspace()));
    addEntry();
    openEntry();
    deleteErrorsFile();
    host_->modify(L"O1");
    expectOpenAndReferring();
    other.modify(L"O1");
    EXPECT_EQ(rows(0), 1) << "the one of now is heard";
    releaseAll();
    EXPECT_FALSE(other.repository().hasListener());
    host_->modify(L"O1");
    host_->repository().unadviseAnswer = S_OK;
    host_->repository().Unadvise(EventSourceDouble::kCookie);
}

TEST_F(RepositoryEvents, ThatTheHostRefusesAreDoneWithout) {
    RepositoryHost refusing(project_);
    refusing.repository().adviseAnswer = CONNECT_E_ADVISELIMIT;
    EXPECT_TRUE(openDb(log_.Get(), refusing.workspace()));
    EXPECT_FALSE(host_->repository().hasListener()) << "that one's database is not the log's any more";
    addEntry();
    openEntry();
    closeDb();
}

TEST_F(RepositoryEvents, MayEndTheLogThatHearsThem) {
    addEntry();
    openEntry();
    deleteErrorsFile();
    bool closed = false;
    host_->onCursor = [&] {
        if (!std::exchange(closed, true)) releaseAll();
    };
    host_->modify(L"O1");
    EXPECT_TRUE(closed);
    EXPECT_FALSE(host_->repository().hasListener());
    EXPECT_EQ(library_->canUnload(), S_OK);
}

} // namespace
} // namespace cvlog::tests
