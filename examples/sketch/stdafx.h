// stdafx.h : the headers that every source of the program needs

#pragma once

#define VC_EXTRALEAN
#define NOMINMAX // std::min, std::max

#include <afxwin.h>
#include <afxcmn.h>
#include <afxdlgs.h>
#include <afxext.h>
#include <afxres.h>

#include <memory>
#include <string>
#include <vector>
