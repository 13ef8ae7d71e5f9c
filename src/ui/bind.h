#pragma once
#include "forms/control.h"

class QLineEdit;

namespace tessarel::ui {

class FloodBar;
class Key;
class LabelPad;
class LevelSlider;
class Pad;
class RowList;

/// Ties a widget to a control: the widget shows the control's state from now on, and a person's gestures go to the control.
/// Either may die first. Widget and control are of the kinds that go together; name, tip, focus and visibility come along.
void bind(LabelPad& widget, forms::Label& label);
void bind(Pad& widget, forms::Picture& picture);
void bind(Pad& widget, forms::Button& button);
void bind(QLineEdit& widget, forms::TextBox& box);
void bind(LevelSlider& widget, forms::Slider& slider);
void bind(RowList& widget, forms::ListBox& list);
void bind(FloodBar& widget, forms::FloodPanel& panel);

/// A key of three pictures: `base` takes the presses, `lit` and `dim` are covers whose visibility is the state.
void bindCovers(Key& widget, forms::Picture& base, forms::Picture& lit, forms::Picture& dim);
/// A key whose light is a picture of its own.
void bindLight(Key& widget, forms::Picture& key, forms::Picture& light);
/// One key for two pictures that take turns: the one on show takes the press; the key is lit while `on` is.
void bindTurns(Key& widget, forms::Picture& off, forms::Picture& on);
/// A key that is dead while its cover label is black.
void bindCover(Key& widget, forms::Label& cover);

/// Only the gestures: for a widget that shows something else, or nothing, of the control.
void bindGestures(Pad& widget, forms::Control& control);

}  // namespace tessarel::ui
