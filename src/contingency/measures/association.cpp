#include "contingency/measures/association.h"

#include "contingency/measures/agreement.h"
#include "contingency/measures/nominal_measures.h"
#include "contingency/measures/ordinal_measures.h"
#include "contingency/scores.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

TableAssociation::TableAssociation()
    : phi(kQuietNaN),
      contingencyCoefficient(kQuietNaN),
      cramersV(kQuietNaN),
      concordant(kQuietNaN),
      discordant(kQuietNaN),
      gamma(kQuietNaN),
      gammaStandardError(kQuietNaN),
      tauB(kQuietNaN),
      tauBStandardError(kQuietNaN),
      tauC(kQuietNaN),
      tauCStandardError(kQuietNaN),
      somersDColumn(kQuietNaN),
      somersDColumnStandardError(kQuietNaN),
      somersDRow(kQuietNaN),
      somersDRowStandardError(kQuietNaN),
      lambdaColumn(kQuietNaN),
      lambdaRow(kQuietNaN),
      lambdaSymmetric(kQuietNaN),
      goodmanKruskalTauColumn(kQuietNaN),
      goodmanKruskalTauRow(kQuietNaN),
      uncertaintyColumn(kQuietNaN),
      uncertaintyRow(kQuietNaN),
      uncertaintySymmetric(kQuietNaN),
      pearsonR(kQuietNaN),
      spearmanRho(kQuietNaN),
      kappa(kQuietNaN),
      kappaStandardError(kQuietNaN) {}

namespace contingency {
namespace {

int Measure(const Table& table, TableAssociation* out) {
    int status = MeasureNominal(table, out);
    if (status == kSuccess) status = MeasureByPairs(table, out);
    if (status == kSuccess) status = SpearmanCorrelation(table, &out->spearmanRho);
    if (status != kSuccess) return status;
    out->pearsonR = PearsonCorrelation(table);
    MeasureAgreement(table, &out->kappa, &out->kappaStandardError);
    return kSuccess;
}

}  // namespace

int MeasureAssociation(const Table& table, TableAssociation* out) {
    *out = TableAssociation();
    if (table.IsEmpty()) return kUnusableData;
    const int status = Measure(table, out);
    if (status != kSuccess) *out = TableAssociation();
    return status;
}

}  // namespace contingency
}  // namespace zul
