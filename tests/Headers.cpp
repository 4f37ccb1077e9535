// What all tests include is compiled once, with this.
