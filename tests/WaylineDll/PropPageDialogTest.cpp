#include "WaylineDll/PropPageDialog.h"

#include <gmock/gmock.h>

#include "tests/WaylineDll/RecordingDialog.h"
#include "tests/WaylineDll/TestDialogs.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

using Page = RecordingDialog<PropPageDialog>;
using Dialog = RecordingDialog<BaseDialog>;

constexpr INT_PTR kConfirmed = 1;
constexpr INT_PTR kCancelled = 0;

PROPSHEETPAGEW Describe(const PropPageDialog& page) {
  PROPSHEETPAGEW description{};
  description.dwSize = sizeof(description);
  description.dwFlags = PSP_USECALLBACK;
  description.hInstance = page.GetInstance();
  description.pszTemplate = page.GetTemplateId();
  description.pfnDlgProc = static_cast<DLGPROC>(page);
  description.pfnCallback = static_cast<LPFNPSPCALLBACKW>(page);
  description.lParam = static_cast<int64_t>(page);
  return description;
}

INT_PTR ShowSheet(const std::vector<PROPSHEETPAGEW>& pages) {
  PROPSHEETHEADERW header{};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
  header.pszCaption = L"Test sheet";
  header.nPages = static_cast<UINT>(pages.size());
  header.ppsp = pages.data();
  return PropertySheetW(&header);
}

class PropPageDialogTest : public testing::Test {
 protected:
  // Shows both pages, the first one in front; the steps are run by the first.
  INT_PTR Show(std::vector<std::function<void()>> steps) {
    first.steps = std::move(steps);
    return ShowSheet({Describe(first), Describe(second)});
  }

  HWND Sheet() const { return GetParent(first.GetWindow()); }
  void PressOk() const { SendMessageW(Sheet(), PSM_PRESSBUTTON, PSBTN_OK, 0); }
  void PressCancel() const { SendMessageW(Sheet(), PSM_PRESSBUTTON, PSBTN_CANCEL, 0); }
  void TurnTo(int index) const { SendMessageW(Sheet(), PSM_SETCURSEL, static_cast<WPARAM>(index), 0); }
  HWND PageInFront() const { return reinterpret_cast<HWND>(SendMessageW(Sheet(), PSM_GETCURRENTPAGEHWND, 0, 0)); }

  Page first{IDD_TEST_PAGE};
  Page second{IDD_TEST_PAGE};
};

TEST_F(PropPageDialogTest, EachPageGetsItsOwnWindowWhenItIsFirstShown) {
  EXPECT_EQ(first.GetWindow(), nullptr);
  Show({[&] {
    EXPECT_EQ(first.GetWindow(), PageInFront());
    EXPECT_NE(first.Control(IDC_TEST_NAME), nullptr);
    EXPECT_EQ(second.GetWindow(), nullptr);
    const HWND window = first.GetWindow();
    TurnTo(1);
    EXPECT_EQ(second.GetWindow(), PageInFront());
    EXPECT_EQ(first.GetWindow(), window);
  }});
  EXPECT_EQ(first.GetWindow(), nullptr);
  EXPECT_EQ(second.GetWindow(), nullptr);
}

TEST_F(PropPageDialogTest, StartsWithOnInitDialogWhichFillsTheControls) {
  Show({});
  ASSERT_GE(first.calls.size(), 2u);
  EXPECT_THAT(first.calls[0], StartsWith("OnInitDialog("));
  EXPECT_EQ(first.calls[1], "SetWindowControls()");
}

TEST_F(PropPageDialogTest, APageThatIsNotToBeLeftStaysInFront) {
  first.notifyResults[static_cast<UINT>(PSN_KILLACTIVE)] = TRUE;
  Show({[&] {
    TurnTo(1);
    EXPECT_EQ(PageInFront(), first.GetWindow());
    first.notifyResults.clear();
    TurnTo(1);
    EXPECT_EQ(PageInFront(), second.GetWindow());
  }});
}

TEST_F(PropPageDialogTest, OkCallsOnOkOfEveryVisitedPageAndEndsWith1) {
  const INT_PTR result = Show({[&] {
    TurnTo(1);
    PressOk();
  }});
  EXPECT_EQ(result, kConfirmed);
  EXPECT_THAT(first.calls, Contains(StartsWith("OnOk(")));
  EXPECT_THAT(second.calls, Contains(StartsWith("OnOk(")));
}

TEST_F(PropPageDialogTest, OkDoesNotReachAPageThatWasNeverShown) {
  Show({[&] { PressOk(); }});
  EXPECT_THAT(second.calls, testing::IsEmpty());
}

TEST_F(PropPageDialogTest, OnOkIsGivenTheNotification) {
  Show({[&] {
    NMHDR record{Sheet(), 0, static_cast<UINT>(PSN_APPLY)};
    const auto address = reinterpret_cast<int64_t>(&record);
    EXPECT_THAT(first.CallsFor(WM_NOTIFY, 0, address),
                ElementsAre(Page::Call("OnNotify", 0, address), Page::Call("OnOk", address), "ReadWindowControls()"));
  }});
}

TEST_F(PropPageDialogTest, TheSheetStaysOpenWhenOnOkRefuses) {
  first.results["OnOk"] = 0;
  const INT_PTR result = Show({[&] { PressOk(); },
                               [&] {
                                 EXPECT_TRUE(IsWindowVisible(Sheet()));
                                 EXPECT_EQ(PageInFront(), first.GetWindow());
                                 first.results.clear();
                                 PressOk();
                               }});
  EXPECT_EQ(result, kConfirmed);
}

TEST_F(PropPageDialogTest, TheSheetStaysOpenWhenThePageMayNotBeLeft) {
  first.notifyResults[static_cast<UINT>(PSN_KILLACTIVE)] = TRUE;
  const INT_PTR result = Show({[&] {
                                 PressOk();
                                 first.notifyResults.clear();
                               },
                               [&] { PressCancel(); }});
  EXPECT_EQ(result, kCancelled);
  EXPECT_THAT(first.calls, Not(Contains(StartsWith("OnOk("))));
}

TEST_F(PropPageDialogTest, AnApplyThatOnNotifyRefusesDoesNotReachOnOk) {
  first.notifyResults[static_cast<UINT>(PSN_APPLY)] = PSNRET_INVALID;
  EXPECT_EQ(Show({[&] { PressOk(); }}), kCancelled);
  EXPECT_THAT(first.calls, Not(Contains(StartsWith("OnOk("))));
}

TEST_F(PropPageDialogTest, CancelCallsOnCancelAndEndsWith0) {
  EXPECT_EQ(Show({[&] { PressCancel(); }}), kCancelled);
  EXPECT_THAT(first.calls, AllOf(Contains(StartsWith("OnCancel(")), Not(Contains(StartsWith("OnOk(")))));
}

TEST_F(PropPageDialogTest, APageThatIsToldToCloseStays) {
  for (const UINT message : {UINT{WM_CLOSE}, UINT{WM_SYSCOMMAND}}) {
    const INT_PTR result = Show({[&] { SendMessageW(first.GetWindow(), message, SC_CLOSE, 0); }, [] {},
                                 [&] {
                                   EXPECT_EQ(first.GetWindow(), PageInFront());
                                   EXPECT_TRUE(IsWindowVisible(first.GetWindow()));
                                   PressOk();
                                 }});
    EXPECT_EQ(result, kConfirmed);
  }
}

TEST_F(PropPageDialogTest, ADialogOverAPageHasItsOwnWindowAndCalls) {
  const INT_PTR result = Show({[&] {
                                 Dialog dialog(IDD_TEST_DIALOG, Sheet());
                                 dialog.steps = {[&] {
                                   EXPECT_NE(dialog.GetWindow(), first.GetWindow());
                                   dialog.CallsForClick(IDOK);
                                 }};
                                 first.calls.clear();
                                 EXPECT_EQ(dialog.DoModal(), IDOK);
                                 EXPECT_THAT(first.calls, Not(Contains("ValidateWindowControls()")));
                               },
                               [&] {
                                 EXPECT_THAT(first.CallsFor(WM_CHAR, L'x', 1), ElementsAre("OnChar(1)"));
                                 PressOk();
                               }});
  EXPECT_EQ(result, kConfirmed);
}

TEST_F(PropPageDialogTest, ADialogCanBeShownWhileAPageIsCreated) {
  class Asking : public Page {
   public:
    using Page::Page;
    int answer = 0;

   protected:
    int OnInitDialog(int64_t parameter) override {
      Dialog dialog(IDD_TEST_DIALOG);
      dialog.steps = {[&] { dialog.CallsForClick(IDCANCEL); }};
      answer = dialog.DoModal();
      return Page::OnInitDialog(parameter);
    }
  } asking(IDD_TEST_PAGE);
  EXPECT_EQ(ShowSheet({Describe(asking)}), kCancelled);
  EXPECT_EQ(asking.answer, IDCANCEL);
}

TEST_F(PropPageDialogTest, TheNextSheetHasItsOwnPages) {
  Show({[&] { PressOk(); }});
  first.calls.clear();
  Page other(IDD_TEST_PAGE);
  other.steps = {[&] {
    EXPECT_NE(other.GetWindow(), nullptr);
    SendMessageW(GetParent(other.GetWindow()), PSM_PRESSBUTTON, PSBTN_OK, 0);
  }};
  EXPECT_EQ(ShowSheet({Describe(other)}), kConfirmed);
  EXPECT_THAT(first.calls, testing::IsEmpty());
}

TEST_F(PropPageDialogTest, APageThatCannotBeCreatedDoesNotTakeTheNextDialogsWindow) {
  PROPSHEETPAGEW description = Describe(first);
  EXPECT_NE(BaseDialog::MyPropPageProc(nullptr, PSPCB_CREATE, &description), 0u);
  Dialog dialog(IDD_TEST_DIALOG);
  dialog.steps = {[&] { dialog.CallsForClick(IDOK); }};
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_THAT(first.calls, testing::IsEmpty());
}

TEST_F(PropPageDialogTest, CopiesTakeOverEverything) {
  const PropPageDialog& original = first;
  const PropPageDialog copy(original);
  PropPageDialog assigned(nullptr, nullptr, nullptr);
  assigned = original;
  for (const PropPageDialog* other : {&copy, static_cast<const PropPageDialog*>(&assigned)}) {
    EXPECT_EQ(other->GetInstance(), original.GetInstance());
    EXPECT_EQ(other->GetTemplateId(), original.GetTemplateId());
  }
}

}  // namespace
