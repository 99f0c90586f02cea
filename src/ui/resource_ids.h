// Ids that the resource script and the code share, beyond those of the forms' own rows. Read by the resource compiler
// as well: plain definitions alone, no C++.
#ifndef TORVANE_RESOURCE_IDS_H
#define TORVANE_RESOURCE_IDS_H

#define iconTorvane 1
#define dialogAbout 107
#define dialogConfirmExit 108
#define aboutText 111

#endif
