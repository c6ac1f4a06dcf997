// SketchMain.cpp : where the program begins, here; Windows programs have no such file

#include "stdafx.h"

#include "Sketch.h"

int main(int argc, char** argv)
{
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    return AfxMain(&theApp, argc, argv);
}
