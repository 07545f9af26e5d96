#include "engines/support/codecs/jpeg/CoefficientWriter.h"

#include <cstdlib>

namespace TarnixTools::engines::jpeg {
namespace {

// Blocks that may stand together in a scan of several components (ITU-T T.81, B.2.3).
constexpr int kMostBlocksTogether = 10;

constexpr int kLastCoefficient = 63;

}  // namespace

CoefficientWriter::~CoefficientWriter() {
  jpeg_destroy_compress(&state_);
  std::free(out_);
}

bool CoefficientWriter::Code(jvirt_barray_ptr* coefficients, Scans scans) {
  state_.arith_code = FALSE;
  state_.optimize_coding = TRUE;
  if (scans == Scans::kProgressive) {
    ChooseScans();
    state_.scan_info = scans_.data();
    state_.num_scans = static_cast<int>(scans_.size());
  }
  jpeg_mem_dest(&state_, &out_, &out_size_);
  jpeg_write_coefficients(&state_, coefficients);
  jpeg_finish_compress(&state_);
  return true;
}

void CoefficientWriter::AddScan(std::initializer_list<int> components, int first, int last,
                                int high, int low) {
  jpeg_scan_info scan{};
  for (const int component : components) {
    scan.component_index[scan.comps_in_scan++] = component;
  }
  scan.Ss = first;
  scan.Se = last;
  scan.Ah = high;
  scan.Al = low;
  scans_.push_back(scan);
}

bool CoefficientWriter::HasColorDifferences() const {
  return state_.jpeg_color_space == JCS_YCbCr || state_.jpeg_color_space == JCS_YCCK;
}

// The means of the blocks: those of both colour differences, which are alike, together.
void CoefficientWriter::AddDirectScans() {
  int component = 0;
  AddScan({component++}, 0, 0, 0, 0);
  const jpeg_component_info* info = state_.comp_info;
  if (HasColorDifferences() && info[1].h_samp_factor * info[1].v_samp_factor +
                                       info[2].h_samp_factor * info[2].v_samp_factor <=
                                   kMostBlocksTogether) {
    AddScan({1, 2}, 0, 0, 0, 0);
    component = 3;
  }
  for (; component < state_.num_components; ++component) {
    AddScan({component}, 0, 0, 0, 0);
  }
}

// What was smallest of some twenty ways to cut photographs and scans into scans: the last bits of
// coefficients apart, two of them where steps are small, and low frequencies apart from high ones. The
// colour differences have too little for that.
void CoefficientWriter::ChooseScans() {
  constexpr int kLastLow = 8;
  constexpr unsigned kSmallSteps = 12;  // three of the lowest frequencies together
  AddDirectScans();
  for (int i = 0; i < state_.num_components; ++i) {
    if (HasColorDifferences() && (i == 1 || i == 2)) {
      AddScan({i}, 1, kLastCoefficient, 0, 0);
      continue;
    }
    const JQUANT_TBL* table = state_.quant_tbl_ptrs[state_.comp_info[i].quant_tbl_no];
    const bool are_steps_small =
        table != nullptr &&
        unsigned{table->quantval[0]} + table->quantval[1] + table->quantval[8] <= kSmallSteps;
    const int last_bits = are_steps_small ? 2 : 1;
    AddScan({i}, 1, kLastLow, 0, last_bits);
    AddScan({i}, kLastLow + 1, kLastCoefficient, 0, last_bits);
    for (int bit = last_bits; bit > 0; --bit) {
      AddScan({i}, 1, kLastCoefficient, bit, bit - 1);
    }
  }
}

}  // namespace TarnixTools::engines::jpeg
