// Numbers of the model picker's dialog and its controls.
#pragma once

#define PICKER_DIALOG 100
#define PICKER_MODEL_LABEL 101
#define PICKER_MODEL 102
#define PICKER_HOST_LABEL 103
#define PICKER_HOST 104
