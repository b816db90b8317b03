#include <examples/convert/Evidence.h>

#include <velum/files/FileUtilities.h>
#include <examples/convert/Survey.h>

namespace vlm::convert {
namespace {

constexpr unsigned int kSample = 512;
constexpr unsigned int kAssumedPage = 1252;

bool IsYes(ConfidenceLevel level) {
  return level == ConfidenceCertain || level == ConfidenceLikely;
}

void SettleMarked(std::uint64_t bytes, Evidence& evidence) {
  evidence.encoding = evidence.mark;
  evidence.reason = "its mark says so";
  if (evidence.mark.kind == EncodingUTF8) return;
  const ConfidenceLevel level =
      evidence.mark.kind == EncodingUTF16LE ? evidence.utf16le : evidence.utf16be;
  if (bytes % 2 != 0) {
    evidence.isSure = false;
    evidence.reason += ", but its last character is cut: the number of bytes is odd";
  } else if (level == ConfidenceNo) {
    evidence.isSure = false;
    evidence.reason += ", but its first bytes have characters that no text has";
  } else if (IsYes(level)) {
    evidence.reason += ", and its bytes bear it out";
  }
}

// True if the statistics tell UTF-16, surely or as all that is left.
bool SettleUtf16(Evidence& evidence) {
  for (const ConfidenceLevel level : {ConfidenceCertain, ConfidenceLikely}) {
    for (const TextEncoding kind : {EncodingUTF16LE, EncodingUTF16BE}) {
      if ((kind == EncodingUTF16LE ? evidence.utf16le : evidence.utf16be) != level) continue;
      evidence.encoding = {kind, 0};
      evidence.reason = level == ConfidenceCertain
                            ? "every second one of its first bytes is 0, and all others are ASCII"
                            : "its first bytes are spread as those of UTF-16 are, without a mark";
      return true;
    }
  }
  const bool maybeLow = evidence.utf16le == ConfidenceDoubtful;
  const bool maybeHigh = evidence.utf16be == ConfidenceDoubtful;
  if (evidence.narrow != ConfidenceNo || (!maybeLow && !maybeHigh)) return false;
  evidence.isSure = false;
  evidence.encoding = {maybeLow ? EncodingUTF16LE : EncodingUTF16BE, 0};
  evidence.reason = maybeLow && maybeHigh
                        ? "bytes of 0 rule out narrow text, and nothing else fits"
                        : "bytes of 0 rule out narrow text, and the other byte order has "
                          "characters that no text has";
  return true;
}

void SettleNarrow(const std::string& path, Evidence& evidence) {
  evidence.isSure = false;
  evidence.encoding = {EncodingANSI, kAssumedPage};
  if (evidence.binary == ConfidenceCertain) {
    evidence.reason = "bytes of 0 stand where no text has them: this is hardly one";
    return;
  }
  const Survey survey = TakeSurvey(path, {EncodingUTF8, 0});
  if (survey.malformed > 0) {
    evidence.reason =
        "narrow text, and no UTF-8: nothing in it tells one code page from another, so that this "
        "one is assumed; --from names another";
    return;
  }
  evidence.encoding = {EncodingUTF8, 0};
  evidence.reason = survey.ascii == survey.characters
                        ? "all of it is ASCII, which is UTF-8 as well"
                        : "all that is not ASCII (" +
                              std::to_string(survey.characters - survey.ascii) +
                              ") is well-formed UTF-8, which other text hardly ever is";
  if (evidence.narrow == ConfidenceDoubtful) {
    evidence.reason += "; but its first bytes are spread as those of UTF-16 are";
  }
}

}  // namespace

Evidence Examine(const std::string& path, const std::optional<Encoding>& named) {
  Evidence evidence;
  GetBOMInfo(path, evidence.markSize, evidence.mark.kind);
  evidence.narrow = IsFileANSI(path, kSample);
  evidence.utf16le = IsFileUTF16LE(path, kSample);
  evidence.utf16be = IsFileUTF16BE(path, kSample);
  evidence.binary = IsFileBinary(path, kSample);
  if (named) {
    evidence.encoding = *named;
    evidence.reason = "told by --from";
    return evidence;
  }
  const auto bytes = static_cast<std::uint64_t>(GetFileSize(path));
  if (bytes == 0) {
    evidence.reason = "the file is empty";
  } else if (evidence.markSize > 0) {
    SettleMarked(bytes, evidence);
  } else if (!SettleUtf16(evidence)) {
    SettleNarrow(path, evidence);
  }
  return evidence;
}

const char* InWords(ConfidenceLevel level) {
  switch (level) {
    case ConfidenceCertain:
      return "certain";
    case ConfidenceNo:
      return "no";
    case ConfidenceLikely:
      return "likely";
    default:
      return "doubtful";
  }
}

std::string MarkText(const Evidence& evidence) {
  if (evidence.markSize == 0) return "none";
  if (evidence.markSize == 3) return "EF BB BF";
  return evidence.mark.kind == EncodingUTF16LE ? "FF FE" : "FE FF";
}

}  // namespace vlm::convert
