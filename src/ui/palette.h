#pragma once
#include <QColor>

/// The colours that windows are drawn in.
namespace tessarel::ui::palette {

inline constexpr QRgb green = 0xff5df29b;
inline constexpr QRgb cyan = 0xff63e6f2;
inline constexpr QRgb yellow = 0xffffd75e;
inline constexpr QRgb red = 0xffff8a80;
inline constexpr QRgb mutedRed = 0xffc98a82;  ///< lamps that say "off"
inline constexpr QRgb softGreen = 0xff9fe9c2;
inline constexpr QRgb glassText = 0xff76a58d;  ///< captions and unlit lamps on glass
inline constexpr QRgb title = 0xffc9ced6;
inline constexpr QRgb caption = 0xffa3aab4;  ///< on the face
inline constexpr QRgb keyText = 0xffd5d9df;
inline constexpr QRgb keyCaption = 0xffb9bfc8;
inline constexpr QRgb keyDim = 0xff747b85;  ///< on keys that can't be pressed now
inline constexpr QRgb keyEdge = 0xff17191d;
inline constexpr QRgb keyTop = 0xff454a52;
inline constexpr QRgb keyBottom = 0xff33373d;
inline constexpr QRgb keyHoverTop = 0xff4d535c;
inline constexpr QRgb keyHoverBottom = 0xff3a3f46;
inline constexpr QRgb keyDownTop = 0xff24272b;
inline constexpr QRgb keyDownBottom = 0xff2c3035;
inline constexpr QRgb faceTop = 0xff34383e;
inline constexpr QRgb faceMiddle = 0xff2a2d32;
inline constexpr QRgb faceBottom = 0xff202327;
inline constexpr QRgb well = 0xff24272c;
inline constexpr QRgb slot = 0xff121417;
inline constexpr QRgb metalTop = 0xffd3d7dd;
inline constexpr QRgb metalMiddle = 0xffa9b0b9;
inline constexpr QRgb metalBottom = 0xff8b929c;
inline constexpr QRgb metalTitle = 0xff1b1e23;    ///< text on the metal frame
inline constexpr QRgb metalCaption = 0xff3b4149;  ///< and its second colour

}  // namespace tessarel::ui::palette
