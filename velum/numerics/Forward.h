#pragma once

/// \file
/// Declares the classes of numerics, for headers that only name them.
///
///     #include <velum/numerics/Forward.h>
///     namespace vlm { double Residual(const RMatrix& a, const RVector& x); }

namespace vlm {

class CDrawStats;
class CExponentialSpline;
class CGeneralLinear;
class CHistogram;
class CIdentityMap;
class CImageRegistration;
class CImageWarp;
class CInverseDistanceSquared;
class CLinearConformal;
class CMarcovSpline;
class CMixedScale;
class CMultivariateStatistics;
class CNaturalCubicSpline;
class CPlanarRegression;
class CQuadraticPolynomial;
class CRadialBasisFunction;
class CRationalQuadraticSpline;
class CSpatialStatistics;
class CThinPlateSpline;
class CTranslate;
class CUniformScale;
class CUnivariateStatistics;
class RMatrix;
class RVector;
class doubledouble;

}  // namespace vlm
