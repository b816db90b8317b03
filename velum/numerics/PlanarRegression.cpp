#include <velum/numerics/PlanarRegression.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/detail/Statistics.h>

#include <cmath>
#include <initializer_list>

namespace vlm {
namespace {

using detail::kUnknown;

double Quotient(double dividend, double divisor) noexcept {
  return divisor > SUKOSHI ? dividend / divisor : kUnknown;
}

double Root(double radicand) noexcept {
  return radicand > SUKOSHI ? std::sqrt(radicand) : kUnknown;
}

}  // namespace

CPlanarRegression::CPlanarRegression() noexcept { Clear(); }

void CPlanarRegression::Clear() noexcept {
  Count = 0;
  for (double CPlanarRegression::*const member :
       {&CPlanarRegression::SlopeX, &CPlanarRegression::SlopeXError, &CPlanarRegression::SlopeY,
        &CPlanarRegression::SlopeYError, &CPlanarRegression::Intercept,
        &CPlanarRegression::InterceptError, &CPlanarRegression::SSRegression,
        &CPlanarRegression::SSResidual, &CPlanarRegression::SSTotal,
        &CPlanarRegression::MSRegression, &CPlanarRegression::MSResidual,
        &CPlanarRegression::FRatio, &CPlanarRegression::RSquared,
        &CPlanarRegression::CorrSlopeXSlopeY, &CPlanarRegression::CorrSlopeXIntercept,
        &CPlanarRegression::CorrSlopeYIntercept, &CPlanarRegression::CorrXY,
        &CPlanarRegression::CorrXZ, &CPlanarRegression::CorrYZ}) {
    this->*member = kUnknown;
  }
}

void Load(CPlanarRegression& r, unsigned int count, double meanX, double meanY, double meanZ,
          double sxx, double sxy, double sxz, double syz, double syy, double szz) noexcept {
  r.Clear();
  if (count == 0) {
    return;
  }
  r.Count = count;
  const double determinant = sxx * syy - sxy * sxy;
  if (std::abs(determinant) > SUKOSHI) {
    r.SlopeX = (syy * sxz - sxy * syz) / determinant;
    r.SlopeY = (sxx * syz - sxy * sxz) / determinant;
    r.Intercept = meanZ - r.SlopeX * meanX - r.SlopeY * meanY;
    r.SSTotal = szz;
    r.SSRegression = r.SlopeX * sxz + r.SlopeY * syz;
    r.SSResidual = szz - r.SlopeX * sxz - r.SlopeY * syz;
    r.MSRegression = r.SSRegression * 0.5;
    r.MSResidual = count >= 4 ? r.SSResidual / (count - 3) : kUnknown;
    r.FRatio = Quotient(r.MSRegression, r.MSResidual);
    r.RSquared = Quotient(r.SSRegression, szz);

    const double m = r.MSResidual;
    r.SlopeXError = Root(syy / determinant * m);
    r.SlopeYError = Root(sxx / determinant * m);
    const double moment = meanY * meanY * sxx + meanX * meanX * syy - 2 * meanX * meanY * sxy;
    r.InterceptError = Root((moment / determinant + 1.0 / count) * m);
    r.CorrSlopeXSlopeY = Quotient(-(sxy / determinant) * m, r.SlopeYError * r.SlopeXError);
    r.CorrSlopeXIntercept =
        Quotient((meanY * sxy - meanX * syy) / determinant * m, r.SlopeXError * r.InterceptError);
    r.CorrSlopeYIntercept =
        Quotient((meanX * sxy - meanY * sxx) / determinant * m, r.SlopeYError * r.InterceptError);
  }
  const double k = count - 1.0;
  const double sx = std::sqrt(sxx / k);
  const double sy = std::sqrt(syy / k);
  const double sz = std::sqrt(szz / k);
  r.CorrXY = Quotient(sxy / k, sy * sx);
  r.CorrXZ = Quotient(sxz / k, sx * sz);
  r.CorrYZ = Quotient(syz / k, sz * sy);
}

}  // namespace vlm
