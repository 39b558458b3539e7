// The outline of any element of a page, as the browser draws it, and the elements at a point.

/** Where an element's border box is on the screen. */
export interface Outline {
  /**
   * In viewport pixels: top left, top right, bottom right, bottom left, with the points where the eye's plane cuts an edge.
   * Empty when all is behind the eye or the element has no box.
   */
  points: { x: number; y: number }[];
  /** Which of the four corners are behind the eye. */
  behind: [boolean, boolean, boolean, boolean];
  /** The eye is nearly in the plane of the box, or in one that the box is drawn on: the outline is thinner than a pixel. */
  edgeOn: boolean;
  /** False where something that the box's place depends on is not supported. */
  exact: boolean;
}

export interface HitOptions {
  /** Only this element and what is in it; the document unless given. */
  within?: Element | Document;
  /** How far beside an outline a point still hits, in pixels; 0 unless given. */
  tolerance?: number;
}

/** One moment of a page: each style is read once. After a change of the page, call look() again. */
export interface Look {
  outlineOf(element: Element): Outline;
  /**
   * The elements whose outline holds the point or passes within the tolerance, front to back. Hidden elements and backs
   * that do not show are left out; clipping, rounded corners and `pointer-events` are ignored.
   */
  hitsAt(x: number, y: number, options?: HitOptions): Element[];
}

/** Loads zan.wasm, once; everything else needs it. */
export function load(source?: URL | BufferSource): Promise<void>;
/** A look at a page, the document of the script unless given, for many questions about one moment. */
export function look(page?: Document): Look;
/** The outline of an element in pixels of its document's viewport. */
export function outlineOf(element: Element): Outline;
/** See Look.hitsAt. */
export function hitsAt(x: number, y: number, options?: HitOptions): Element[];
