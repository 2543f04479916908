#include "WaylineDll/SetupWizard/WizardSummary.h"

#include <algorithm>
#include <array>
#include <utility>

#include "WaylineDll/SetupWizard/WizardStrings.h"

namespace {

// What is not given is said to be empty.
SummaryLine LineOf(unsigned text, std::wstring item) {
  return item.empty() ? SummaryLine{text, {}, IDS_SUMMARY_EMPTY} : SummaryLine{text, std::move(item)};
}

std::wstring NameOf(uint32_t id, const ProfileTable& profiles) {
  const auto found = profiles.find(id);
  return found != profiles.end() && found->second ? found->second->GetName() : std::wstring();
}

void AddServers(const ServerSettings& servers, std::vector<SummaryLine>& lines) {
  constexpr std::array<unsigned, kServerFieldCount> kTexts = {IDS_SUMMARY_DNS1,   IDS_SUMMARY_DNS2,
                                                              IDS_SUMMARY_WINS1,  IDS_SUMMARY_WINS2,
                                                              IDS_SUMMARY_DOMAIN, IDS_SUMMARY_SUFFIXES};
  for (size_t index = 0; index < kServerFieldCount; ++index) {
    switch (servers[index].mode) {
      case kAutomaticServer:
        lines.push_back({kTexts[index], {}, IDS_SUMMARY_AUTOMATIC});
        break;
      case kManualServer:
        lines.push_back({kTexts[index], servers[index].value});
        break;
      case kNoServer:
        lines.push_back({kTexts[index], {}, IDS_SUMMARY_NO_SERVER});
        break;
      default:  // what it means is not known
        break;
    }
  }
}

}  // namespace

std::vector<SummaryLine> Summarize(const WizardDraft& draft, const ProfileTable& profiles,
                                   const std::vector<ServiceRecord>& services) {
  std::vector<SummaryLine> lines = {LineOf(IDS_SUMMARY_NAME, draft.name)};
  if (draft.GetDefaults() != 0) lines.push_back(LineOf(IDS_SUMMARY_DEFAULTS, NameOf(draft.GetDefaults(), profiles)));
  lines.push_back(LineOf(IDS_SUMMARY_ACCOUNT, draft.GetAccount()));
  lines.push_back(LineOf(IDS_SUMMARY_USER_ID, draft.GetUserId()));
  const uint32_t service = ServiceInForce(draft.GetLinkService());
  const auto found = std::ranges::find(services, static_cast<int32_t>(service), &ServiceRecord::serviceId);
  if (found != services.end()) lines.push_back(LineOf(IDS_SUMMARY_SERVICE, found->displayText));
  if (draft.setsServers) {
    AddServers(draft.GetServers(), lines);
  } else {
    lines.push_back({IDS_SUMMARY_SERVERS, {}, IDS_SUMMARY_AS_IN_DEFAULTS});
  }
  lines.push_back(draft.copySource != 0 ? LineOf(IDS_SUMMARY_COPY, NameOf(draft.copySource, profiles))
                                        : SummaryLine{IDS_SUMMARY_COPY, {}, IDS_SUMMARY_NO_COPY});
  return lines;
}
