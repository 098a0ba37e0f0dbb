// Visual Basic's names of the colours that the user's system has chosen.
#pragma once

#include <cstdint>

namespace qrn::form {

inline constexpr uint32_t kSystemColour = 0x80000000;  // and the system's number of the colour

// Row n names kSystemColour + n.
inline constexpr const char* kSystemColours[] = {"vbScrollBars",
                                                 "vbDesktop",
                                                 "vbActiveTitleBar",
                                                 "vbInactiveTitleBar",
                                                 "vbMenuBar",
                                                 "vbWindowBackground",
                                                 "vbWindowFrame",
                                                 "vbMenuText",
                                                 "vbWindowText",
                                                 "vbTitleBarText",
                                                 "vbActiveBorder",
                                                 "vbInactiveBorder",
                                                 "vbApplicationWorkspace",
                                                 "vbHighlight",
                                                 "vbHighlightText",
                                                 "vbButtonFace",
                                                 "vbButtonShadow",
                                                 "vbGrayText",
                                                 "vbButtonText",
                                                 "vbInactiveTitleBarText",
                                                 "vb3DHighlight",
                                                 "vb3DDKShadow",
                                                 "vb3DLight",
                                                 "vbInfoText",
                                                 "vbInfoBackground"};

}  // namespace qrn::form
