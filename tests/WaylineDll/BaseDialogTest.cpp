#include "WaylineDll/BaseDialog.h"

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/WaylineDll/RecordingDialog.h"
#include "tests/WaylineDll/TestDialogs.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Dialog = RecordingDialog<BaseDialog>;

int64_t AsParameter(const void* pointer) { return reinterpret_cast<int64_t>(pointer); }

// Counts its Cancels, and answers each as the test says.
class Cancelling : public Dialog {
 public:
  using Dialog::Dialog;
  int cancels = 0;
  std::function<void()> onCancel;

 protected:
  int OnCancel(int64_t) override {
    // One that closes itself for ever must not keep the test.
    if (++cancels > 10) return EndDialog(GetWindow(), kStillOpen);
    onCancel();
    return 1;
  }
};

ptrdiff_t CancelsOf(const Dialog& dialog) {
  return std::ranges::count_if(dialog.calls, [](const std::string& call) { return call.starts_with("OnCancel("); });
}

class BaseDialogTest : public testing::Test {
 protected:
  // Runs the dialog; the steps are to end it.
  int Run(std::vector<std::function<void()>> steps) {
    dialog.steps = std::move(steps);
    return dialog.DoModal();
  }

  // Runs the dialog and returns what is called for one message.
  std::vector<std::string> CallsFor(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    std::vector<std::string> calls;
    Run({[&] { calls = dialog.CallsFor(message, wordParameter, longParameter); }});
    return calls;
  }

  std::vector<std::string> CallsForClick(int button) {
    std::vector<std::string> calls;
    result = Run({[&] {
      control = AsParameter(dialog.Control(button));
      calls = dialog.CallsForClick(button);
    }});
    return calls;
  }

  Dialog dialog{IDD_TEST_DIALOG};
  int result = 0;       // of the dialog in which a button was clicked
  int64_t control = 0;  // the window of that button, as its command carries it
};

TEST_F(BaseDialogTest, StartsWithOnInitDialogWhichFillsTheControls) {
  std::vector<std::string> calls;
  Run({[&] { calls = dialog.calls; }});
  ASSERT_GE(calls.size(), 2u);
  EXPECT_EQ(calls[0], Dialog::Call("OnInitDialog", AsParameter(&dialog)));
  EXPECT_EQ(calls[1], "SetWindowControls()");
}

TEST_F(BaseDialogTest, KnowsItsWindowFromOnInitDialogUntilItIsDestroyed) {
  EXPECT_EQ(dialog.GetWindow(), nullptr);
  Run({[&] {
    EXPECT_TRUE(IsWindow(dialog.GetWindow()));
    EXPECT_NE(dialog.Control(IDC_TEST_NAME), nullptr);
  }});
  EXPECT_EQ(dialog.GetWindow(), nullptr);
}

TEST_F(BaseDialogTest, RunsOverItsParent) {
  const HWND parent =
      CreateWindowExW(0, L"STATIC", L"Parent", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  Dialog child(IDD_TEST_DIALOG, parent);
  child.steps = {[&] { EXPECT_EQ(GetWindow(child.GetWindow(), GW_OWNER), parent); }};
  EXPECT_EQ(child.DoModal(), Dialog::kStillOpen);
  DestroyWindow(parent);
}

TEST_F(BaseDialogTest, ReturnsMinus1WhenThereIsNoTemplate) {
  Dialog missing(999);
  EXPECT_EQ(missing.DoModal(), -1);
  EXPECT_THAT(missing.calls, IsEmpty());
}

TEST_F(BaseDialogTest, OkEndsWith1WhenBothChecksAgree) {
  const auto calls = CallsForClick(IDOK);
  EXPECT_THAT(calls, ElementsAre(Dialog::Call("OnCommand", MAKEWPARAM(IDOK, BN_CLICKED), control),
                                 "ValidateWindowControls()", Dialog::Call("OnOk", control), "ReadWindowControls()"));
  EXPECT_EQ(result, IDOK);
}

TEST_F(BaseDialogTest, OkStaysOpenWhenTheControlsAreNotValid) {
  dialog.results["ValidateWindowControls"] = 0;
  const auto calls = CallsForClick(IDOK);
  EXPECT_THAT(calls, AllOf(Contains("ValidateWindowControls()"), Not(Contains(Dialog::Call("OnOk", control)))));
  EXPECT_EQ(result, Dialog::kStillOpen);
}

TEST_F(BaseDialogTest, OkStaysOpenWhenOnOkRefuses) {
  dialog.results["OnOk"] = 0;
  const auto calls = CallsForClick(IDOK);
  EXPECT_THAT(calls, Contains(Dialog::Call("OnOk", control)));
  EXPECT_EQ(result, Dialog::kStillOpen);
}

TEST_F(BaseDialogTest, OkStaysOpenWhenTheControlsCannotBeRead) {
  dialog.results["ReadWindowControls"] = 0;
  CallsForClick(IDOK);
  EXPECT_EQ(result, Dialog::kStillOpen);
}

TEST_F(BaseDialogTest, OkCanBePressedAgainAfterARefusal) {
  dialog.results["OnOk"] = 0;
  const int code = Run({[&] { dialog.CallsForClick(IDOK); },
                        [&] {
                          dialog.results.clear();
                          dialog.CallsForClick(IDOK);
                        }});
  EXPECT_EQ(code, IDOK);
}

TEST_F(BaseDialogTest, CancelEndsWith2) {
  const auto calls = CallsForClick(IDCANCEL);
  EXPECT_THAT(calls, ElementsAre(Dialog::Call("OnCommand", MAKEWPARAM(IDCANCEL, BN_CLICKED), control),
                                 Dialog::Call("OnCancel", control)));
  EXPECT_EQ(result, IDCANCEL);
}

// Each as the system sends it: the title bar and Alt+F4, the taskbar, and a program that wants the dialog closed.
using Close = void (*)(HWND dialog);
const std::vector<Close> kCloses = {
    [](HWND dialog) { SendMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
    [](HWND dialog) { PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE | 1, 0); },
    [](HWND dialog) { SendMessageW(dialog, WM_CLOSE, 0, 0); },
    [](HWND dialog) { PostMessageW(dialog, WM_CLOSE, 0, 0); },
};

TEST_F(BaseDialogTest, ClosingEndsWith2ByOneCancel) {
  for (const Close close : kCloses) {
    dialog.calls.clear();
    EXPECT_EQ(Run({[&] { close(dialog.GetWindow()); }, [] {}, [] {}}), IDCANCEL);
    EXPECT_EQ(CancelsOf(dialog), 1);
  }
}

TEST_F(BaseDialogTest, ADialogThatAnswersCancelByClosingItselfEnds) {
  for (const Close closeItself : kCloses) {
    Cancelling closing(IDD_TEST_DIALOG);
    closing.onCancel = [&] { closeItself(closing.GetWindow()); };
    closing.steps = {[&] { closing.CallsForClick(IDCANCEL); }, [] {}, [] {}};
    EXPECT_EQ(closing.DoModal(), IDCANCEL);
    EXPECT_EQ(closing.cancels, 1);
    for (const Close close : kCloses) {
      closing.cancels = 0;
      closing.steps = {[&] { close(closing.GetWindow()); }, [] {}, [] {}, [] {}};
      EXPECT_EQ(closing.DoModal(), IDCANCEL);
      EXPECT_EQ(closing.cancels, 1);
    }
  }
}

TEST_F(BaseDialogTest, ADialogWhoseCommandOfCancelClosesItEndsByOneCancel) {
  for (const Close close : kCloses) {
    class Closing : public Dialog {
     public:
      explicit Closing(Close close) : Dialog(IDD_TEST_DIALOG), close_(close) {}

     protected:
      int OnCommand(uint64_t command, int64_t control) override {
        if (LOWORD(command) != IDCANCEL) return Dialog::OnCommand(command, control);
        close_(GetWindow());
        return 1;
      }

     private:
      Close close_;
    } closing(close);
    closing.steps = {[&] { SendMessageW(closing.Control(IDCANCEL), BM_CLICK, 0, 0); }, [] {}, [] {}};
    EXPECT_EQ(closing.DoModal(), IDCANCEL);
    EXPECT_EQ(CancelsOf(closing), 1);
  }
}

TEST_F(BaseDialogTest, ADialogThatRefusesToBeCancelledIsAskedEachTime) {
  Cancelling refusing(IDD_TEST_DIALOG);
  refusing.onCancel = [&] {
    if (refusing.cancels == 1 + static_cast<int>(kCloses.size())) EndDialog(refusing.GetWindow(), IDCANCEL);
  };
  refusing.steps = {[&] { refusing.CallsForClick(IDCANCEL); }};
  for (const Close close : kCloses) {
    refusing.steps.emplace_back([&refusing, close] { close(refusing.GetWindow()); });
    refusing.steps.emplace_back([] {});
  }
  EXPECT_EQ(refusing.DoModal(), IDCANCEL);
  EXPECT_EQ(refusing.cancels, 1 + static_cast<int>(kCloses.size()));
}

TEST_F(BaseDialogTest, ADialogThatRefusesToBeCancelledIsAskedForEachOfTwoClosesPostedTogether) {
  Cancelling refusing(IDD_TEST_DIALOG);
  refusing.onCancel = [] {};
  for (const auto& [message, parameter] : {std::pair<UINT, WPARAM>(WM_CLOSE, 0), {WM_SYSCOMMAND, SC_CLOSE}}) {
    refusing.cancels = 0;
    refusing.steps = {[&] {
                        for (int close = 0; close < 2; ++close) {
                          PostMessageW(refusing.GetWindow(), message, parameter, 0);
                        }
                      },
                      [] {}, [] {}, [] {}};
    EXPECT_EQ(refusing.DoModal(), Dialog::kStillOpen);
    EXPECT_EQ(refusing.cancels, 2);
  }
}

TEST_F(BaseDialogTest, ADialogThatClosesItselfEndsByOneCancelAlsoWhenAnotherCloseWaits) {
  Cancelling closing(IDD_TEST_DIALOG);
  closing.onCancel = [&] { PostMessageW(closing.GetWindow(), WM_CLOSE, 0, 0); };
  closing.steps = {[&] {
                     PostMessageW(closing.GetWindow(), WM_CLOSE, 0, 0);
                     PostMessageW(closing.GetWindow(), WM_CLOSE, 0, 0);
                   },
                   [] {}, [] {}, [] {}};
  EXPECT_EQ(closing.DoModal(), IDCANCEL);
  EXPECT_EQ(closing.cancels, 1);
}

TEST_F(BaseDialogTest, ADialogThatAsksAQuestionInItsCancelIsNotClosedUnderIt) {
  for (const Close close : kCloses) {
    Cancelling asking(IDD_TEST_DIALOG);
    asking.onCancel = [&] {
      // As a message box of the dialog: it disables its owner, and deals out the messages that come meanwhile.
      EnableWindow(asking.GetWindow(), FALSE);
      close(asking.GetWindow());
      MSG message{};
      for (const UINT id : {UINT{WM_SYSCOMMAND}, UINT{WM_CLOSE}}) {
        while (PeekMessageW(&message, asking.GetWindow(), id, id, PM_REMOVE) != FALSE) DispatchMessageW(&message);
      }
      EnableWindow(asking.GetWindow(), TRUE);
    };
    asking.steps = {[&] { asking.CallsForClick(IDCANCEL); }, [] {}, [] {}};
    EXPECT_EQ(asking.DoModal(), Dialog::kStillOpen);
    EXPECT_EQ(asking.cancels, 1);
  }
}

TEST_F(BaseDialogTest, ADialogThatHandlesItsClosingStaysOpen) {
  class Handling : public Dialog {
   public:
    using Dialog::Dialog;

   protected:
    int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter) override {
      return message == WM_CLOSE ? 1 : Dialog::OnMsg(message, wordParameter, longParameter);
    }
  } handling(IDD_TEST_DIALOG);
  handling.steps = {[&] { SendMessageW(handling.GetWindow(), WM_CLOSE, 0, 0); }};
  EXPECT_EQ(handling.DoModal(), Dialog::kStillOpen);
  EXPECT_EQ(CancelsOf(handling), 0);
}

TEST_F(BaseDialogTest, ADialogThatClosedItselfCanBeShownAndCancelledAgain) {
  Cancelling closing(IDD_TEST_DIALOG);
  closing.onCancel = [&] { PostMessageW(closing.GetWindow(), WM_CLOSE, 0, 0); };
  for (int showing = 1; showing <= 2; ++showing) {
    closing.steps = {[&] { closing.CallsForClick(IDCANCEL); }, [] {}, [] {}};
    EXPECT_EQ(closing.DoModal(), IDCANCEL);
    EXPECT_EQ(closing.cancels, showing);
  }
}

TEST_F(BaseDialogTest, ACommandThatIsHandledGoesNoFurther) {
  dialog.results["OnCommand"] = 1;
  for (const int button : {IDOK, IDCANCEL, IDHELP}) {
    const auto calls = CallsForClick(button);
    EXPECT_THAT(calls, ElementsAre(Dialog::Call("OnCommand", MAKEWPARAM(button, BN_CLICKED), control)));
    EXPECT_EQ(result, Dialog::kStillOpen);
  }
}

TEST_F(BaseDialogTest, PassesACommandWithItsIdCodeAndControl) {
  const WPARAM command = MAKEWPARAM(IDC_TEST_NAME, EN_CHANGE);
  EXPECT_THAT(CallsFor(WM_COMMAND, command, 55), ElementsAre(Dialog::Call("OnCommand", command, 55)));
}

TEST_F(BaseDialogTest, ARealButtonSendsItsCommand) {
  const int code = Run({[&] { SendMessageW(dialog.Control(IDOK), BM_CLICK, 0, 0); }});
  EXPECT_EQ(code, IDOK);
}

TEST_F(BaseDialogTest, TheHelpButtonAsksForHelp) {
  const auto calls = CallsForClick(IDHELP);
  EXPECT_THAT(calls, Contains(Dialog::Call("OnHelp", control)));
  EXPECT_EQ(result, Dialog::kStillOpen);
}

TEST_F(BaseDialogTest, TheHelpKeyAsksForHelp) {
  HELPINFO info{};
  info.cbSize = sizeof(info);
  EXPECT_THAT(CallsFor(WM_HELP, 0, AsParameter(&info)), ElementsAre(Dialog::Call("OnHelp", AsParameter(&info))));
}

TEST_F(BaseDialogTest, PassesACharacter) { EXPECT_THAT(CallsFor(WM_CHAR, L'x', 7), ElementsAre("OnChar(7)")); }

TEST_F(BaseDialogTest, PassesAnyOtherMessageWithBothParameters) {
  EXPECT_THAT(CallsFor(Dialog::kRecordedMessage, 0xffffffffffffffff, -3),
              ElementsAre(Dialog::Call("OnMsg", Dialog::kRecordedMessage, 0xffffffffffffffff, -3)));
}

TEST_F(BaseDialogTest, HandsTheResultOfANotificationToItsSender) {
  NMHDR record{nullptr, IDC_TEST_NAME, NM_CLICK};
  dialog.results["OnNotify"] = 42;
  Run({[&] {
    dialog.calls.clear();
    EXPECT_EQ(SendMessageW(dialog.GetWindow(), WM_NOTIFY, IDC_TEST_NAME, AsParameter(&record)), 42);
    EXPECT_THAT(dialog.calls, ElementsAre(Dialog::Call("OnNotify", IDC_TEST_NAME, AsParameter(&record))));
  }});
}

TEST_F(BaseDialogTest, TheDialogProcedureReturnsWhatTheOperationReturns) {
  dialog.results = {{"OnMsg", 11}, {"OnChar", 12}, {"OnHelp", 13}, {"OnCommand", 14}, {"OnInitDialog", 0}};
  Run({[&] {
    const HWND window = dialog.GetWindow();
    EXPECT_EQ(BaseDialog::MyDlgProc(window, Dialog::kRecordedMessage, 0, 0), 11);
    EXPECT_EQ(BaseDialog::MyDlgProc(window, WM_CHAR, 0, 0), 12);
    EXPECT_EQ(BaseDialog::MyDlgProc(window, WM_HELP, 0, 0), 13);
    EXPECT_EQ(BaseDialog::MyDlgProc(window, WM_COMMAND, 99, 0), 14);
    dialog.results.clear();
    EXPECT_EQ(BaseDialog::MyDlgProc(window, WM_COMMAND, 99, 0), 0);
    EXPECT_EQ(BaseDialog::MyDlgProc(window, Dialog::kRecordedMessage, 0, 0), 0);
  }});
}

TEST_F(BaseDialogTest, OnDestroyComesLastAndStillHasTheWindow) {
  class Closing : public Dialog {
   public:
    using Dialog::Dialog;
    bool hadWindow = false;

   protected:
    int OnDestroy(int64_t parameter) override {
      hadWindow = IsWindow(GetWindow()) != FALSE;
      return Dialog::OnDestroy(parameter);
    }
  } closing(IDD_TEST_DIALOG);
  closing.DoModal();
  EXPECT_TRUE(closing.hadWindow);
  EXPECT_EQ(closing.calls.back(), "OnDestroy(0)");
}

TEST_F(BaseDialogTest, AWindowWithoutAnObjectIsLeftAlone) {
  Run({[&] {
    const HWND window = dialog.GetWindow();
    SetWindowLongPtrW(window, DWLP_USER, 0);
    EXPECT_THAT(dialog.CallsFor(WM_CHAR, L'x', 0), IsEmpty());
    SetWindowLongPtrW(window, DWLP_USER, AsParameter(&dialog));
  }});
}

TEST_F(BaseDialogTest, ADialogOverADialogHasItsOwnWindowAndCalls) {
  Dialog upper(IDD_TEST_DIALOG);
  const int code = Run({[&] {
                          upper.steps = {[&] {
                            EXPECT_NE(upper.GetWindow(), dialog.GetWindow());
                            upper.CallsForClick(IDOK);
                          }};
                          dialog.calls.clear();
                          EXPECT_EQ(upper.DoModal(), IDOK);
                          EXPECT_THAT(dialog.calls, Not(Contains("ValidateWindowControls()")));
                        },
                        [&] { dialog.CallsForClick(IDCANCEL); }});
  EXPECT_EQ(code, IDCANCEL);
}

TEST_F(BaseDialogTest, CanBeShownAgain) {
  EXPECT_EQ(Run({[&] { dialog.CallsForClick(IDOK); }}), IDOK);
  EXPECT_EQ(Run({}), Dialog::kStillOpen);
}

TEST_F(BaseDialogTest, DoesNothingByItselfForWhatIsNotOverridden) {
  class Plain : public BaseDialog {
   public:
    using BaseDialog::BaseDialog;
    void ExpectDefaults() {
      EXPECT_NE(SetWindowControls(), 0);
      EXPECT_NE(ReadWindowControls(), 0);
      EXPECT_NE(ValidateWindowControls(), 0);
      EXPECT_NE(OnOk(0), 0);
      EXPECT_EQ(OnHelp(0), 0);
      EXPECT_EQ(OnChar(0), 0);
      EXPECT_EQ(OnDestroy(0), 0);
      EXPECT_EQ(OnCommand(0, 0), 0);
      EXPECT_EQ(OnNotify(0, 0), 0);
      EXPECT_EQ(OnMsg(0, 0, 0), 0);
    }
  };
  Plain(nullptr, nullptr, nullptr).ExpectDefaults();
}

TEST_F(BaseDialogTest, CopiesTakeOverEverything) {
  Run({[&] {
    const BaseDialog& original = dialog;
    const BaseDialog copy(original);
    BaseDialog assigned(nullptr, nullptr, nullptr);
    assigned = original;
    for (const BaseDialog* other : {&copy, static_cast<const BaseDialog*>(&assigned)}) {
      EXPECT_EQ(other->GetInstance(), original.GetInstance());
      EXPECT_EQ(other->GetTemplateId(), original.GetTemplateId());
      EXPECT_EQ(other->GetParentWindow(), original.GetParentWindow());
      EXPECT_EQ(other->GetWindow(), original.GetWindow());
    }
  }});
}

TEST_F(BaseDialogTest, ConvertsToWhatAPageDescriptionCarries) {
  EXPECT_EQ(static_cast<DLGPROC>(dialog), &BaseDialog::MyDlgProc);
  EXPECT_EQ(static_cast<LPFNPSPCALLBACKW>(dialog), &BaseDialog::MyPropPageProc);
  EXPECT_EQ(static_cast<int64_t>(dialog), AsParameter(&dialog));
}

// The virtual table by its slots, as another compiler's code would use it.
template <typename... Arguments>
int CallSlot(BaseDialog& dialog, size_t slot, Arguments... arguments) {
  using Function = int (*)(BaseDialog*, Arguments...);
  void* const* const table = *reinterpret_cast<void* const* const*>(&dialog);
  return reinterpret_cast<Function>(table[slot])(&dialog, arguments...);
}

TEST_F(BaseDialogTest, HasItsOperationsInTheAgreedSlots) {
  dialog.results = {{"OnInitDialog", 1}, {"OnCancel", 1}};
  NMHDR record{};
  CallSlot(dialog, 0);
  CallSlot(dialog, 1);
  CallSlot(dialog, 2);
  CallSlot(dialog, 3, int64_t{3});
  CallSlot(dialog, 4, int64_t{4});
  CallSlot(dialog, 5, int64_t{5});
  CallSlot(dialog, 6, int64_t{6});
  CallSlot(dialog, 7, int64_t{7});
  CallSlot(dialog, 8, int64_t{8});
  CallSlot(dialog, 9, uint64_t{9}, int64_t{90});
  CallSlot(dialog, 10, uint64_t{10}, AsParameter(&record));
  CallSlot(dialog, 11, uint32_t{Dialog::kRecordedMessage}, uint64_t{11}, int64_t{110});
  EXPECT_THAT(dialog.calls,
              ElementsAre("SetWindowControls()", "ReadWindowControls()", "ValidateWindowControls()", "OnOk(3)",
                          "ReadWindowControls()", "OnInitDialog(4)", "OnCancel(5)", "OnHelp(6)", "OnChar(7)",
                          "OnDestroy(8)", "OnCommand(9, 90)", Dialog::Call("OnNotify", 10, AsParameter(&record)),
                          Dialog::Call("OnMsg", Dialog::kRecordedMessage, 11, 110)));
  Dialog missing(999);
  EXPECT_EQ(CallSlot(missing, 12), -1);
}

TEST_F(BaseDialogTest, HasItsDestructorInTheLastSlot) {
  class Dying : public Dialog {
   public:
    explicit Dying(bool& dead) : Dialog(IDD_TEST_DIALOG), dead_(dead) {}
    ~Dying() override { dead_ = true; }

   private:
    bool& dead_;
  };
  bool dead = false;
  alignas(Dying) std::byte memory[sizeof(Dying)];
  CallSlot(*new (memory) Dying(dead), 13);
  EXPECT_TRUE(dead);
}

}  // namespace
